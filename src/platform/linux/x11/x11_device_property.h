// Properties of input devices that are bytes.
#pragma once

#include <X11/Xlib.h>

#include <vector>

namespace tarvik {

/// Empty when there is no such property (None included), no such device, or when it is not made of 8-bit integers. One
/// round trip.
std::vector<unsigned char> readDeviceBytes(Display* display, int device, Atom property);
void writeDeviceBytes(Display* display, int device, Atom property, const std::vector<unsigned char>& bytes);

} // namespace tarvik
