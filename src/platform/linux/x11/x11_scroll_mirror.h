// Reverses a scroll axis by moving it back twice as far as the hand did.
#pragma once

#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/xi_event.h"
#include "ports/event_tap.h"

#include <map>
#include <set>
#include <vector>

namespace tarvik {

/// For devices whose driver cannot do it. Applications get the notch, and right after it two notches of the other
/// direction, as movements of the same device; the sum is exact, also of a high-resolution wheel's fractions. Nothing
/// is grabbed, so it works under another program's grab (an open menu, a drag) and touches no other device.
/// docs/decisions/0002-reversing-the-wheel.md has the reasons and the figures.
///
/// How far the hand moved is read from the axis whenever the server presses a wheel's button for it, and not counted
/// from those presses: our own movements make presses too, and need not be told apart. Tap's thread.
class X11ScrollMirror {
public:
    X11ScrollMirror(Display* display, X11Devices& devices) : display_(display), devices_(devices) {}

    /// Mirrors these axes of these devices, and no others, from where they are now. One round trip.
    void watch(const std::map<int, WheelAxes>& axes);
    bool watching() const { return !axes_.empty(); }
    bool watches(int device) const { return axes_.count(device) != 0; }
    /// The server has pressed a wheel's button for a device: `settle` will look at the axis.
    void turned(const XiEvent& press);
    /// Moves what has to be moved; one round trip if the wheel has turned. Not during a hold, whose turns are not the
    /// applications'.
    void settle();
    /// Mirrors from where the axes are now, after a hold.
    void rebase();

private:
    struct Axis {
        ScrollAxis info;
        /// How far we have moved it since `info.value` was read.
        double moved = 0;
        /// Whether the axis has been seen to follow, and how often it has not: a device may ignore what we do, but the
        /// hand may also have made up for it in the same moment.
        bool follows = false;
        int refusals = 0;
    };

    void settle(int device, std::vector<Axis>& axes);
    void move(int device, Axis& axis, double by);
    void checkThatFollows(int device, Axis& axis, double before) const;

    Display* const display_;
    X11Devices& devices_;
    std::map<int, std::vector<Axis>> axes_;
    std::set<int> turned_;
};

} // namespace tarvik
