// The wheel while the gesture button is held.
#pragma once

#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/x11_wheel_reversal.h"
#include "platform/linux/x11/xi_event.h"
#include "ports/pointer_event.h"

#include <deque>
#include <map>
#include <optional>
#include <vector>

namespace tarvik {

/// One movement of a wheel, and what it takes to undo it.
struct WheelTurn {
    int source = 0;
    /// The scroll axis that moved, or nothing where a device has buttons for a wheel.
    std::optional<int> axis;
    /// The change of the axis's value, or the button.
    int amount = 0;
    /// `amount` is the reverse of what the hand did; the deltas are the hand's own.
    bool turnedRound = false;
    ScrollDelta vertical;
    ScrollDelta horizontal;
    bool directionInverted = false;
};

/// Scroll axes are absolute: a movement that we swallow stays in the value, and the application below would make one
/// jump of it at its next scroll. So each movement is taken back at once, and turned again when it is to reach the
/// application. Tap's thread.
class X11HoldWheel {
public:
    X11HoldWheel(Display* display, X11Devices& devices, const X11WheelReversal& reversal)
        : display_(display), devices_(devices), reversal_(reversal) {}

    /// At the beginning of a hold: learns where the axes stand. One round trip.
    void begin();
    /// The turns that a movement, or a press of a wheel's button, tells of, without those that we made ourselves.
    std::vector<WheelTurn> turns(const XiEvent& event);
    /// Takes a turn of an axis back; the event of it comes to us, and `turns` leaves it out. While the grab is active.
    void takeBack(const WheelTurn& turn);
    /// Makes the turn anew, for an application, in the hand's own direction. While the grab is open.
    void repeat(const WheelTurn& turn);
    /// Tells the application below where the device's axes stand. Each grab makes toolkits forget it, and they would
    /// take the first notch after it for that. While no grab is active.
    void announce(int source);

private:
    struct Axis {
        ScrollAxis info;
        /// The part of a notch that has not made a line yet.
        double fraction = 0;
        bool moved = false;
        /// It moved between the press and the list of the axes: how far, the wheel buttons tell that the server makes
        /// of the movement.
        bool changeUnknown = false;
    };
    /// A turn of ours, and the request that made it.
    struct OwnTurn {
        unsigned long serial = 0;
        int source = 0;
        int axis = 0;
        int amount = 0;
    };

    std::vector<WheelTurn> ofButton(const XiEvent& event);
    std::vector<WheelTurn> ofAxes(const XiEvent& event);
    bool isOwn(const XiEvent& event, int axis, double change);
    /// Brings the values of the axes to where they were before the event.
    void catchUp(const XiEvent& event);
    WheelTurn turnOf(int source, Axis& axis, double change) const;
    bool directionInverted(int source);

    Display* const display_;
    X11Devices& devices_;
    const X11WheelReversal& reversal_;
    std::map<int, std::vector<Axis>> axes_;
    /// The request that listed the axes.
    unsigned long listed_ = 0;
    std::map<int, bool> inverted_;
    /// Those whose events come to us, and those whose events went to an application.
    std::deque<OwnTurn> own_;
    std::deque<OwnTurn> repeated_;
};

} // namespace tarvik
