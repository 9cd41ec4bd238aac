// Lets a turn of the wheel through to the application in the middle of a hold.
#pragma once

#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/x11_hold_wheel.h"
#include "platform/linux/x11/x11_pointer_probe.h"
#include "platform/linux/x11/xi_queue.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

namespace tarvik {

/// The grab lives as long as a button is down, and an application that gets a wheel's button while another one is down
/// keeps the pointer until that one is up. So the trigger goes up for the moment of the turn, as far as the server
/// knows, and its new press brings the grab back. Tap's thread.
class X11WheelPass {
public:
    X11WheelPass(Display* display, XiQueue& queue, X11Devices& devices, const X11PointerProbe& probe,
                 X11HoldWheel& wheel)
        : display_(display), queue_(queue), devices_(devices), probe_(probe), wheel_(wheel) {}

    enum class Outcome : std::uint8_t {
        resumed,
        /// The hand has let go meanwhile. Nobody will report it, and no application has seen a click.
        released,
        /// Another client has the pointer. The button is up for the server, and nobody will report its release.
        taken
    };
    /// While only `button` of `source`, which moves the pointer `master`, is down. A few round trips.
    Outcome pass(const WheelTurn& turn, int source, int master, int button);
    /// Whether the event, or what a device did, was caused by `pass`.
    bool isOwn(const XiEvent& event) const;

private:
    void forgetExpected();
    /// What the press that this request has faked brought us. A round trip.
    std::optional<XiEvent> pressOf(unsigned long request);
    /// Whether the hand has released the button of the hold, and not we, before a request; by what has been read.
    bool handLetGo(int source, int button, unsigned long before) const;
    /// Whether a press that we have faked, and that has not come to us, went to another client. A round trip.
    bool wentElsewhere(int master, int button) const;

    Display* const display_;
    XiQueue& queue_;
    X11Devices& devices_;
    const X11PointerProbe& probe_;
    X11HoldWheel& wheel_;
    /// Events that our requests have brought or will bring, in order.
    std::deque<std::pair<XiEventType, unsigned long>> expected_;
    /// The device and the time of our last press: while another client looks at something, it comes late, and with
    /// another serial number.
    std::optional<std::pair<int, Time>> late_;
};

} // namespace tarvik
