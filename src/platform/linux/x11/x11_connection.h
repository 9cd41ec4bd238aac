// A connection to the X server: one per thread that talks to it.
#pragma once

#include "platform/linux/x11/x11_atoms.h"

#include <X11/Xlib.h>

#include <atomic>
#include <functional>
#include <memory>

namespace tarvik {

/// The server's identifier of a window; `Window` is the port's class.
using XWindow = ::Window;

/// Opened on any thread, then used by one thread at a time.
///
/// Xlib's error handlers belong to the whole process. Opening a connection installs ours: a protocol error is recorded
/// by the traps of its connection (x11_error_trap.h) and otherwise ignored, and a connection that breaks does not end
/// the process. A toolkit that installs handlers of its own must have started before.
class X11Connection {
public:
    /// Connects to the server that DISPLAY names; null when it does not answer. `lost` is called once, on the thread
    /// that finds the connection broken; every later request then fails quietly.
    static std::unique_ptr<X11Connection> open(std::function<void()> lost = {});
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    Display* display() const { return display_; }
    XWindow root() const { return root_; }
    const X11Atoms& atoms() const { return atoms_; }
    bool lost() const { return lost_; }

    /// Throws away what the server sent without being asked (changes of the keyboard mapping go to every client), so
    /// that nothing piles up on a connection whose owner waits for no events.
    void discardEvents() const;

private:
    explicit X11Connection(Display* display, std::function<void()> lost);

    Display* const display_;
    const XWindow root_;
    const X11Atoms atoms_;
    const std::function<void()> onLost_;
    std::atomic<bool> lost_ = false;
};

} // namespace tarvik
