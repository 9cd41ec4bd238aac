// Lets a turn of the wheel through to the application in the middle of a hold.
#pragma once

#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/x11_hold_wheel.h"
#include "platform/linux/x11/x11_pointer_probe.h"
#include "platform/linux/x11/xi_queue.h"

#include <cstdint>
#include <deque>
#include <optional>

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
    /// Whether a release, or that of a device, was caused by `pass`.
    bool isOwn(const XiEvent& release) const;
    enum class Press : std::uint8_t {
        byHand,
        /// Made and answered by `pass`.
        answered,
        /// Made by `pass`, which has not seen it before it ended. It wants an answer.
        late
    };
    /// Whether presses or releases of its own have been read and not been dealt with yet.
    bool moreToCome() const;
    /// For every press, in order.
    Press claim(const XiEvent& press);

private:
    void forgetExpected();
    /// What the press that was faked last has brought us. A round trip.
    std::optional<XiEvent> findPress();
    /// Whether the hand has released the button of the hold, and not we, before a request; by what has been read.
    bool handLetGo(int source, int button, unsigned long before) const;
    /// Whether a press that we have faked, and that has not come to us, went to another client. A round trip.
    bool wentElsewhere(int master, int button) const;

    Display* const display_;
    XiQueue& queue_;
    X11Devices& devices_;
    const X11PointerProbe& probe_;
    X11HoldWheel& wheel_;
    /// An event that a request of ours has brought or will bring. The serial number alone does not tell: until the next
    /// request the hand's events have it as well.
    struct Expected {
        XiEventType type;
        int button;
        unsigned long serial;
        bool operator==(const Expected&) const = default;
    };
    /// In order.
    std::deque<Expected> expected_;
    /// While another client looks at something, a press comes late, and with another serial number.
    struct Late {
        int source;
        int button;
        Time time;
        bool operator==(const Late&) const = default;
    };
    /// The last press, as its device has reported it, as long as nobody has answered it.
    std::optional<Late> late_;
    /// The last press, as long as nobody has answered it.
    std::optional<Expected> unanswered_;
};

} // namespace tarvik
