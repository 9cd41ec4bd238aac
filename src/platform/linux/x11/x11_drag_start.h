// Turns a hold into a real drag: the application gets the press that was swallowed.
#pragma once

#include "platform/linux/x11/x11_button_grab.h"
#include "platform/linux/x11/x11_click_return.h"
#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/xi_queue.h"
#include "support/log.h"

namespace tarvik {

/// While our grab is open, the device of the hold releases its button and presses it again, in one go: the release ends
/// the hold in the server, the press is the application's, and so is everything until the hand lets go. When the hand
/// lets go in between, nobody would release that press; then we do, and the application gets a click.
/// docs/decisions/0001-giving-a-click-back.md has the reasons. Tap's thread.
class X11DragStart {
public:
    X11DragStart(Display* display, XiQueue& queue, X11Devices& devices, X11ButtonGrab& grab, LogSink& log)
        : display_(display), queue_(queue), devices_(devices), grab_(grab), log_(log) {}

    /// While the button of `press` is the only one that is down, as far as the events that have been read tell, and raw
    /// events are followed. A release of it comes through the grab: that is the end of the hold. A few round trips.
    void begin(const ReturnedClick& press);

private:
    Display* const display_;
    XiQueue& queue_;
    X11Devices& devices_;
    X11ButtonGrab& grab_;
    LogSink& log_;
};

} // namespace tarvik
