"""A small application: one window that does nothing. plain_window.py X Y WIDTH HEIGHT"""

import os
import sys

from Xlib import X, Xatom, Xutil, display


def main():
    x, y, width, height = map(int, sys.argv[1:])
    connection = display.Display()
    screen = connection.screen()
    window = screen.root.create_window(x, y, width, height, 0, screen.root_depth, background_pixel=screen.white_pixel)
    window.set_wm_class("plain", "Plain")
    window.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.USSize)
    window.set_wm_protocols([connection.intern_atom("WM_DELETE_WINDOW")])
    window.change_property(connection.intern_atom("_NET_WM_PID"), Xatom.CARDINAL, 32, [os.getpid()])
    window.map()
    while connection.next_event().type != X.ClientMessage:
        pass


if __name__ == "__main__":
    main()
