// Core Graphics: geometry, displays, events.
#pragma once

#include <CoreGraphics/CGEvent.h>
#include <CoreGraphics/CGGeometry.h>

extern "C" {

typedef std::uint32_t CGDirectDisplayID;
CGRect CGDisplayBounds(CGDirectDisplayID display);

} // extern "C"
