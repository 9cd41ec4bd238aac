"""Real applications, each started on a desktop and asked for its own state."""

import itertools
import json
import os
import subprocess
import tempfile
import time

from desktop.polling import PATIENCE, poll

HERE = os.path.dirname(os.path.realpath(__file__))
SETTLED = 0.25  # seconds for which a window must have kept the focus
PLACE = (40, 40, 1000, 700)  # x, y, width, height: room for menus to the right and below


class Application:
    """Ended when the block ends. `window` is its first window: placed, in front and with the focus. What it remembers from
    one start to the next is left behind."""

    command = ()

    def __init__(self, desk, screen, *arguments, place=PLACE):
        self.desk, self.screen = desk, screen
        self._arguments, self._place = arguments, place
        self.process = None

    def __enter__(self):
        name = self.command[0]
        env = dict(self.desk.env, XDG_CONFIG_HOME=tempfile.mkdtemp(prefix=f"config-{name}-", dir=self.desk.folder))
        with open(self.desk.path(f"{name}.out"), "ab") as output:
            self.process = subprocess.Popen([*self.command, *self._arguments], env=env, cwd=self.desk.folder,
                                            stdin=subprocess.DEVNULL, stdout=output, stderr=output)
        try:
            # Not told from the windows there were: the server gives a new program the numbers of one that has just ended.
            self.window = self.new_window(())
            self.arrange(self.window, self._place)
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.terminate()
        try:
            self.process.wait(5)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def new_window(self, before):
        window = poll(lambda: next((w for w in self.windows() if w not in before and w.shown), None))
        assert window, f"no new window of {self.command[0]}; there are {self.screen.windows()}"
        return window

    def windows(self):
        return [w for w in self.screen.windows() if w.pid == self.process.pid]

    def menus(self):
        return self.screen.menus(self.process.pid)

    def arrange(self, window, place):
        window.place(*place)
        # Terminals round the size to whole characters.
        assert poll(lambda: window.frame and all(0 <= wanted - got < 30 for wanted, got
                                                 in zip(place[2:], window.frame[2:]))), f"not resized: {window}"
        self.focus(window)

    def focus(self, window=None):
        """Gives the window the focus for good: a toolkit that is still starting takes it once more."""
        window = window or self.window
        since = None

        def settled():
            nonlocal since
            if self.screen.active() != window:
                since = None
                window.activate()
                return False
            since = since or time.monotonic()
            return time.monotonic() - since > SETTLED

        assert poll(settled), f"{window} does not get the focus"


class Browser(Application):
    """Chromium on local pages only. `names` are the pages that its tabs show."""

    command = ("chromium", "--no-first-run", "--no-default-browser-check", "--disable-background-networking",
               "--disable-component-update", "--disable-default-apps", "--disable-domain-reliability", "--disable-sync",
               "--disable-gpu", "--disable-quic", "--disable-breakpad", "--disable-extensions", "--dns-prefetch-disable",
               "--disable-features=Translate,OptimizationHints,MediaRouter", "--host-resolver-rules=MAP * ~NOTFOUND",
               "--password-store=basic", "--window-position=40,40", "--window-size=1000,700")

    def __init__(self, desk, screen, *names, place=PLACE):
        # Root may not use the sandbox; the test type keeps the bar that warns of it away.
        root = ("--no-sandbox", "--test-type") if os.geteuid() == 0 else ()
        self._flags = (f"--user-data-dir={desk.path('chromium')}", *root)
        super().__init__(desk, screen, *self._flags, *map(self.address, names), place=place)
        self._names = names

    def __enter__(self):
        super().__enter__()
        self.expect_page(self._names[0])
        return self

    @staticmethod
    def address(name):
        return f"file://{HERE}/page.html?{name}"

    def open(self, *names):
        """A fresh window with these pages in tabs takes the place of the one before."""
        before, old = set(self.screen.windows()), self.window
        subprocess.run([*self.command, *self._flags, "--new-window", *map(self.address, names)], env=self.desk.env,
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=20,
                       check=True)
        self.window = self.new_window(before)
        self.arrange(self.window, self._place)
        old.close()
        assert poll(lambda: not old.exists), "the window before stays"
        self.expect_page(names[0])

    @property
    def state(self):
        """What the page of the chosen tab says of itself; nothing when it is no page of ours."""
        try:
            title = self.window.title
            return json.JSONDecoder().raw_decode(title, title.index("{"))[0]
        except ValueError:
            return None

    def expect(self, what, condition, patience=PATIENCE):
        """Waits until the state of the page is as it should be, and returns it."""
        def holds():
            state = self.state
            return state if state and condition(state) else None
        state = poll(holds, patience)
        assert state, f"{what}: not in time; the title is {self.window.title!r}"
        return state

    def expect_page(self, name):
        """Waits until the page is chosen and listens: what is done to a page that has not been painted yet is lost, and a
        tab may show the title that it had when it was closed."""
        seen = self.expect(f"page {name}", lambda state: state["page"] == name)
        x, y = self.middle
        steps = itertools.cycle((x + 1, x))

        def listens():
            nonlocal seen
            before, seen = seen, self.state or seen
            self.desk.mouse.move_to(next(steps), y)
            return seen["page"] == name and seen["born"] == before["born"] and seen["moves"] > before["moves"]
        assert poll(listens, interval=0.02), f"page {name} does not listen; the title is {self.window.title!r}"

    def expect_reload(self, before):
        """before: the state of the page that is to be loaded again"""
        self.expect("the page is loaded again", lambda state: state["page"] == before["page"] and
                    state["how"] == "reload" and state["born"] > before["born"])
        self.expect_page(before["page"])

    @property
    def middle(self):
        """A point in the page."""
        frame = self.window.frame
        return frame.x + 400, frame.y + 350


class GtkEditor(Application):
    """Mousepad; one tab for each file."""
    command = ("mousepad", "--disable-server")

    @property
    def middle(self):
        frame = self.window.frame
        return frame.x + 300, frame.y + 150


class QtEditor(GtkEditor):
    """FeatherPad; one tab for each file."""
    command = ("featherpad", "--standalone")


class Terminal(Application):
    """LXTerminal; each tab runs a shell."""
    command = ("lxterminal", "--no-remote")

    def tabs(self):
        with open(f"/proc/{self.process.pid}/task/{self.process.pid}/children", encoding="ascii") as file:
            return len(file.read().split())
