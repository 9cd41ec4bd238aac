// Protocol errors of one stretch of requests.
#pragma once

#include <X11/Xlib.h>

namespace tarvik {

/// Catches the errors of the requests that its thread makes on `display` while it lives; traps may nest. Errors that no
/// trap catches are ignored: a window may vanish at any moment.
class X11ErrorTrap {
public:
    explicit X11ErrorTrap(Display* display);
    ~X11ErrorTrap();
    X11ErrorTrap(const X11ErrorTrap&) = delete;
    X11ErrorTrap& operator=(const X11ErrorTrap&) = delete;

    /// Waits until the server has carried the requests out; the code of the first error so far (BadWindow, ...), or
    /// 0 (Success).
    int sync();

    struct Recorder;

private:
    Display* const display_;
    const unsigned long firstRequest_;
    unsigned char code_ = Success;
};

/// Makes the handlers described in x11_connection.h the process's. May be repeated.
void installX11ErrorHandlers();

} // namespace tarvik
