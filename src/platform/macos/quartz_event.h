// Quartz events as the engine sees them, and back.
#pragma once

#include "platform/macos/cf_ref.h"
#include "ports/pointer_event.h"

#include <ApplicationServices/ApplicationServices.h>

#include <chrono>

namespace tarvik {

/// What the tap asks for: the events of the right button and of the buttons beyond it, whichever of them is the
/// trigger, and the wheel.
CGEventMask tappedEvents();

/// Locations are in points, with the origin at the top left of the main display, as Quartz gives them. Presses and
/// releases, which may be given back, carry a copy of the event. `event` may be null for the system's notices.
PointerEvent pointerEvent(CGEventType type, CGEventRef event, std::chrono::nanoseconds time);

/// Writes the axes in which `after` differs into the event, which was translated to `before`.
void writeScroll(CGEventRef event, const PointerEvent& before, const PointerEvent& after);

/// A copy of the platform's event with the value's location and marker, and everything else as the device sent it (the
/// click count, the pressure, the modifier keys). Empty when there is none to copy.
CfRef<CGEventRef> postableEvent(const PointerEvent& event);

} // namespace tarvik
