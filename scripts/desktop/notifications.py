"""The desktop's notification service, which remembers what it was to show."""

import dbus.service

from desktop.polling import poll
from desktop.tray import BusServices

_NAME, _PATH = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"


class _Service(dbus.service.Object):
    def __init__(self, connection, notices):
        super().__init__(connection, _PATH)
        self._notices = notices

    @dbus.service.method(_NAME, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, program, replaces, icon, title, text, actions, hints, timeout):
        self._notices.append((str(title), str(text), [str(action) for action in actions]))
        return replaces or len(self._notices)

    @dbus.service.signal(_NAME, signature="us")
    def ActionInvoked(self, number, action):
        pass


class Notifications:
    def __init__(self, env):
        self._env, self.notices = env, []

    def __enter__(self):
        self._services = BusServices(self._env, _NAME)
        self._service = _Service(self._services.connection, self.notices)
        self._services.start()
        return self

    def __exit__(self, *_):
        self._services.close()

    def next(self):
        """The oldest notice that was not yet asked for: title, text, actions."""
        if not poll(lambda: self.notices):
            raise AssertionError("there is no notification")
        return self.notices.pop(0)

    def choose(self, action, number=1):
        self._service.ActionInvoked(number, action)
