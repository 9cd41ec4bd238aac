// Core Graphics: Quartz events and event taps.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CGEventTypes.h>
#include <CoreGraphics/CGGeometry.h>

extern "C" {

typedef struct __CGEvent* CGEventRef;
typedef struct __CGEventSource* CGEventSourceRef;
typedef struct __CGEventTapProxy* CGEventTapProxy;
typedef std::uint16_t CGKeyCode;
typedef std::uint64_t CGEventMask;
#define CGEventMaskBit(type) (static_cast<CGEventMask>(1) << (type))
typedef CGEventRef (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event, void* userInfo);

CFMachPortRef CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place, CGEventTapOptions options,
                               CGEventMask eventsOfInterest, CGEventTapCallBack callback, void* userInfo);
void CGEventTapEnable(CFMachPortRef tap, bool enable);
bool CGEventTapIsEnabled(CFMachPortRef tap);

CGEventRef CGEventCreateCopy(CGEventRef event);
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode key, bool down);
void CGEventPost(CGEventTapLocation tap, CGEventRef event);
CGPoint CGEventGetLocation(CGEventRef event);
void CGEventSetLocation(CGEventRef event, CGPoint location);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field);
void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, std::int64_t value);
double CGEventGetDoubleValueField(CGEventRef event, CGEventField field);
void CGEventSetDoubleValueField(CGEventRef event, CGEventField field, double value);

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID state);
bool CGEventSourceButtonState(CGEventSourceStateID state, CGMouseButton button);
void CGEventSourceSetLocalEventsSuppressionInterval(CGEventSourceRef source, CFTimeInterval seconds);

} // extern "C"
