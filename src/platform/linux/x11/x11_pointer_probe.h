// Whether another client has the pointer, and what the server says of it.
#pragma once

#include "platform/linux/x11/xi_event.h"
#include "support/geometry.h"

#include <X11/Xlib.h>

#include <chrono>
#include <optional>

namespace tarvik {

/// A pointer as far as its events have been delivered: what waits in a frozen one has not happened yet.
struct PointerState {
    /// Device pixels of the root window.
    Point location;
    XiButtons down;
};

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
    /// Nothing when there is no such pointer. A round trip.
    std::optional<PointerState> state(int master) const;

private:
    bool isTaken(int master) const;

    Display* const display_;
    const ::Window root_;
    /// Never shown: a grab on it fails, and the reason tells.
    const ::Window hidden_;
};

} // namespace tarvik
