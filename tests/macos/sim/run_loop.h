#pragma once

#include <CoreFoundation/CoreFoundation.h>

namespace tarvik::sim {

/// The main run loop in the common modes, which also run while a menu is open.
bool isMainLoop(CFRunLoopRef loop, CFRunLoopMode mode);

} // namespace tarvik::sim
