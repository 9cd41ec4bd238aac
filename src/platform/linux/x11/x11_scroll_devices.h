// Which devices have a wheel, and what each of them offers for turning it round.
#pragma once

#include "platform/linux/x11/x11_devices.h"

#include <vector>

namespace tarvik {

/// A pointing device that scrolls by a wheel, as far as the server can tell.
struct WheelDevice {
    int id = 0;
    /// Empty where the device has only buttons for a wheel.
    std::vector<ScrollAxis> axes;
    bool hasButtons = false;
    /// Its driver can turn both axes round ("natural scrolling").
    bool hasNaturalScrolling = false;

    bool hasAxis(bool vertical) const;
};

/// The driver's property for natural scrolling: one byte, 0 or 1. `None` when no device here has it.
Atom naturalScrollingProperty(Display* display);

/// Every attached slave pointer, the server's own test pointer included, except those that scroll by touch. A few round
/// trips for each.
std::vector<WheelDevice> wheelDevices(Display* display, const X11Devices& devices);

} // namespace tarvik
