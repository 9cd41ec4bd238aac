// Whether another client has the pointer.
#pragma once

#include <X11/Xlib.h>

#include <chrono>

namespace tarvik {

/// A window manager that looks at every click keeps the pointer frozen meanwhile, and an open menu keeps it for itself.
/// Asks by a request for a grab that the server can only refuse, so that no event goes astray. Tap's thread.
class X11PointerProbe {
public:
    X11PointerProbe(Display* display, ::Window root);
    ~X11PointerProbe();
    X11PointerProbe(const X11PointerProbe&) = delete;
    X11PointerProbe& operator=(const X11PointerProbe&) = delete;

    /// Returns once no other client has the pointer of this master, or after `longest`; whether nobody has it. At least
    /// one round trip.
    bool waitUntilFree(int master, std::chrono::milliseconds longest) const;
    /// Whether the button is down for the pointer `master`. What waits in a frozen pointer is not yet. A round trip.
    bool isDown(int master, int button) const;

private:
    bool isTaken(int master) const;

    Display* const display_;
    /// Never shown: a grab on it fails, and the reason tells.
    const ::Window hidden_;
};

} // namespace tarvik
