#include "model/wording.h"

namespace tarvik {
namespace {

constexpr Wording macos = {
    "⚠︎ Grant Accessibility Permission…",
    "Tarvik needs Accessibility permission",
    "Enable Tarvik in System Settings → Privacy & Security → Accessibility. Gestures start automatically once it's "
    "granted.",
    "Open Accessibility Settings",
    "Switch desktops (Spaces)",
    "Applies to mouse wheels only, so you can use natural scrolling on the trackpad and classic scrolling on the mouse "
    "(or vice versa).",
    "“Previous/Next Desktop” sends ⌃← / ⌃→. Make sure these are turned on in System Settings → Keyboard → Keyboard "
    "Shortcuts… → Mission Control (“Move left a space” / “Move right a space”). You need at least two desktops — add "
    "one from Mission Control (gesture ↑, then the + at the top).",
    "Tab actions use ⇧⌘[ and ⇧⌘], which work in Safari, Chrome, Firefox, Arc, Finder, Terminal, VS Code and most "
    "tabbed apps. For apps with different shortcuts, bind a gesture to “Custom Shortcut…”.",
    "Mouse gestures for macOS",
};

constexpr Wording onLinux = {
    "⚠︎ Gestures Need an X11 Session…",
    "Tarvik needs an X11 session",
    "In this session Tarvik cannot see the mouse in every window. Log out, choose a session named “X11” or “Xorg” on "
    "the login screen, and log in again. Gestures start automatically there.",
    "How to Change the Session",
    "Switch desktops",
    "Applies to mouse wheels only, so you can use natural scrolling on the touchpad and classic scrolling on the mouse "
    "(or vice versa).",
    "“Previous/Next Desktop” asks the window manager for the neighbouring desktop, and sends Ctrl+Alt+Left / "
    "Ctrl+Alt+Right where it does not answer. You need at least two desktops — add one in your desktop's settings or "
    "in its overview (gesture ↑).",
    "Tab actions use Ctrl+Page Up and Ctrl+Page Down, which work in web browsers, file managers, terminals, editors "
    "and most tabbed apps. For apps with different shortcuts, bind a gesture to “Custom Shortcut…”.",
    "Mouse gestures for Linux",
};

} // namespace

const Wording& macosWording() { return macos; }
const Wording& linuxWording() { return onLinux; }

} // namespace tarvik
