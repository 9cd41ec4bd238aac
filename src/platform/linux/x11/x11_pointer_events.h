// The server's events as the engine's, and the engine's clicks as the server's.
#pragma once

#include "platform/linux/x11/x11_click_return.h"
#include "platform/linux/x11/x11_server_clock.h"
#include "platform/linux/x11/xi_event.h"
#include "ports/pointer_event.h"
#include "ports/screens.h"

#include <chrono>
#include <cstdint>

namespace tarvik {

/// Tap's thread.
class X11PointerEvents {
public:
    explicit X11PointerEvents(const Screens& screens) : screens_(screens) {}

    /// `button` is PointerEvent's number. A press knows its screen's scale, and what it needs to be given back.
    PointerEvent make(const XiEvent& event, PointerEventType type, std::int64_t button);
    /// A notice, which no device sent, at the time of the last event.
    PointerEvent notice(PointerEventType type) const;
    /// The click, or the press, that a press of `make` is to be given back as; at the event's present location.
    static ReturnedClick returned(const PointerEvent& press, bool unsure = false);

private:
    const Screens& screens_;
    X11ServerClock clock_;
    std::chrono::nanoseconds now_{};
};

} // namespace tarvik
