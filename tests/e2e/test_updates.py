"""Updates, with a server and a notification service of the test's own: what the user is told in each case."""

import os
import socket
import stat
import tempfile
import unittest

from desktop_test import DesktopTest
from desktop.notifications import Notifications
from desktop.tray import Tray
from feed_server import FeedServer, feed

PROGRAM = os.environ.get("TARVIK_WITH_FEED", "")
FAILED = "Tarvik could not look for updates"
OPEN = ["default", "Show Details", "open", "Show Details"]


def redirect(address):
    def answer(request):
        request.send_response(302)
        request.send_header("Location", address)
        request.end_headers()
    return answer


def endless(request):
    """Ten megabytes, without saying how much it will be."""
    request.send_response(200)
    request.end_headers()
    for _ in range(160):
        request.wfile.write(os.urandom(65536))


class Updates(DesktopTest):
    def setUp(self):
        super().setUp()
        self.tray = self.enterContext(Tray(self.desk.env))
        self.server = self.enterContext(FeedServer(self.desk.path(f"feed-{self._testMethodName}")))

    def make_program(self, name, script):
        programs = self.desk.path("programs")
        os.makedirs(programs, exist_ok=True)
        with open(os.path.join(programs, name), "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\n{script}\n")
        os.chmod(file.name, stat.S_IRWXU)
        return programs

    def start(self, certificates=None, runtime_folder=""):
        opened = self.desk.path("opened")
        if os.path.exists(opened):
            os.remove(opened)  # by another test
        programs = self.make_program("xdg-open", f"echo \"$1\" >>{opened}")
        env = dict(self.desk.env, TARVIK_TEST_FEED=self.server.url, no_proxy="*", NO_PROXY="*",
                   XDG_RUNTIME_DIR=runtime_folder,
                   TARVIK_TEST_FEED_CA=self.server.certificates if certificates is None else certificates,
                   PATH=programs + ":" + self.desk.env["PATH"])
        self.program = self.tarvik(program=PROGRAM, env=env)
        self.opened = opened
        self.item = self.tray.item()

    def can_gain_rights(self):
        with open(f"/proc/{self.program.process.pid}/status", encoding="utf-8") as status:
            return "NoNewPrivs:\t0\n" in status.read()

    def stored(self, key):
        with open(os.path.join(self.program.folder, "Tarvik.conf"), encoding="utf-8") as file:
            return [line for line in file.read().splitlines() if line.startswith(key + "=")]

    def test_every_outcome(self):
        shown = self.enterContext(Notifications(self.desk.env))
        self.start()
        self.assertIn(("Check for Updates…",), self.item.menu())
        self.assertEqual(self.server.asked, 0, "a start asks nobody")
        too_large = (FAILED, "The list of updates is too large.", [])
        unreadable = (FAILED, "The list of updates cannot be read.", [])
        bomb = b'<!DOCTYPE rss [<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;">]><rss><channel>&b;</channel></rss>'
        insecure = self.server.url.replace("https", "http")
        for name, answer, notice in (
                ("same", feed((20, "1.2")), ("Tarvik is up to date", "Tarvik 1.2 is the newest version.", [])),
                ("older", feed((19, "1.1"), (3, "0.9")),
                 ("Tarvik is up to date", "Tarvik 1.2 is newer than the newest published version, 1.1.", [])),
                ("redirect", redirect(insecure),
                 (FAILED, "The update server sent Tarvik on to an address that is not secure.", [])),
                ("redirect in circles", redirect(self.server.url),
                 (FAILED, "The update server sent Tarvik on too many times.", [])),
                ("garbage", endless, too_large),
                ("garbage, announced", b"x" * 10_000_000, too_large),
                ("malformed", feed((21, "1.3"))[:-8], unreadable),
                ("entities", bomb, unreadable),
                ("no feed", b"<html/>", unreadable),
                ("empty", feed(), (FAILED, "The list of updates has no version for Linux.", [])),
                ("error", lambda request: request.send_error(404),
                 (FAILED, "The update server answered with error 404.", [])),
                ("newer", feed((19, "1.1"), (101, "2.0"), (21, "1.3")), None)):
            with self.subTest(name):
                self.server.answer = answer
                self.item.choose("Check for Updates…")
                if notice:
                    self.assertEqual(shown.next(), notice)
        self.assertEqual(shown.next(), ("Tarvik 2.0 is available.", "You have 1.2.", OPEN))
        self.assertEqual(len(self.stored("lastUpdateCheck")), 1)

        shown.choose("open")
        self.expect("the page", lambda: os.path.exists(self.opened))
        with open(self.opened, encoding="utf-8") as file:
            self.assertEqual(file.read(), "https://example.org/tarvik/2.0\n")

        self.server.close()
        self.item.choose("Check for Updates…")
        self.assertEqual(shown.next(), (FAILED, "The update server cannot be reached.", []))

    def test_a_server_that_is_somebody_else(self):
        shown = self.enterContext(Notifications(self.desk.env))
        self.start(certificates="")
        self.item.choose("Check for Updates…")
        self.assertEqual(shown.next(), (FAILED, "The update server could not prove its identity.", []))
        self.assertEqual(self.server.asked, 0)
        self.assertEqual(self.stored("lastUpdateCheck"), [])

    def test_pages_belong_to_the_session(self):
        """Where there is a service manager it opens them, for Tarvik has given up gaining rights."""
        shown = self.enterContext(Notifications(self.desk.env))
        runtime = self.enterContext(tempfile.TemporaryDirectory())
        os.mkdir(os.path.join(runtime, "systemd"))
        self.enterContext(socket.socket(socket.AF_UNIX)).bind(os.path.join(runtime, "systemd", "private"))
        asked = self.desk.path("asked")
        self.make_program("systemd-run", f'printf "%s\\n" "$@" >{asked}; while [ "$1" != -- ]; do shift; done; shift; "$@"')
        self.start(runtime_folder=runtime)
        self.assertFalse(self.can_gain_rights())
        self.server.answer = feed((21, "1.3"))
        self.item.choose("Check for Updates…")
        shown.next()
        shown.choose("open")
        self.expect("the page", lambda: os.path.exists(self.opened))
        with open(asked, encoding="utf-8") as file:
            words = file.read().splitlines()
        self.assertEqual(words[:4], ["--user", "--quiet", "--collect", "--property=KillMode=process"])
        self.assertIn("--setenv=DISPLAY=" + self.desk.env["DISPLAY"], words)
        self.assertEqual(words[-2], "xdg-open")

    def test_without_notifications(self):
        """Who asked gets a window."""
        self.start()
        self.assertTrue(self.can_gain_rights(), "nobody else would start what needs them")
        self.server.answer = feed((20, "1.2"))
        self.item.choose("Check for Updates…")
        self.expect("a window", lambda: [w for w in self.screen.windows() if w.title == "Tarvik"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
