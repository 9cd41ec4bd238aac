// The one property of a wheel event that only the application framework tells.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

namespace tarvik {

/// Whether the device's direction is inverted ("natural scrolling").
bool isDirectionInvertedFromDevice(CGEventRef wheelEvent);

} // namespace tarvik
