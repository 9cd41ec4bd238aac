#include "platform/macos/quartz_event.h"

#include "platform/macos/scroll_direction.h"

namespace tarvik {
namespace {

constexpr CGEventType tappedTypes[] = {
    kCGEventRightMouseDown,    kCGEventRightMouseDragged, kCGEventRightMouseUp, kCGEventOtherMouseDown,
    kCGEventOtherMouseDragged, kCGEventOtherMouseUp,      kCGEventScrollWheel,
};

struct AxisFields {
    CGEventField line;
    CGEventField point;
    CGEventField fixed;
};

constexpr AxisFields verticalFields = {kCGScrollWheelEventDeltaAxis1, kCGScrollWheelEventPointDeltaAxis1,
                                       kCGScrollWheelEventFixedPtDeltaAxis1};
constexpr AxisFields horizontalFields = {kCGScrollWheelEventDeltaAxis2, kCGScrollWheelEventPointDeltaAxis2,
                                         kCGScrollWheelEventFixedPtDeltaAxis2};

ScrollDelta readAxis(CGEventRef event, const AxisFields& fields) {
    return {CGEventGetIntegerValueField(event, fields.line), CGEventGetIntegerValueField(event, fields.point),
            CGEventGetDoubleValueField(event, fields.fixed)};
}

/// The line first: Quartz derives the other two from it, so they must be written over what it made of them.
void writeAxis(CGEventRef event, const AxisFields& fields, const ScrollDelta& delta) {
    CGEventSetIntegerValueField(event, fields.line, delta.line);
    CGEventSetIntegerValueField(event, fields.point, delta.point);
    CGEventSetDoubleValueField(event, fields.fixed, delta.fixed);
}

bool mayBeGivenBack(CGEventType type) {
    return type == kCGEventRightMouseDown || type == kCGEventRightMouseUp || type == kCGEventOtherMouseDown ||
           type == kCGEventOtherMouseUp;
}

} // namespace

CGEventMask tappedEvents() {
    CGEventMask mask = 0;
    for (const auto type : tappedTypes)
        mask |= CGEventMaskBit(type);
    return mask;
}

PointerEvent pointerEvent(CGEventType type, CGEventRef event, std::chrono::nanoseconds time) {
    PointerEvent result;
    result.type = static_cast<PointerEventType>(type);
    result.time = time;
    if (!event || type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput)
        return result;
    const auto location = CGEventGetLocation(event);
    result.location = {location.x, location.y};
    result.marker = CGEventGetIntegerValueField(event, kCGEventSourceUserData);
    if (type == kCGEventScrollWheel) {
        result.vertical = readAxis(event, verticalFields);
        result.horizontal = readAxis(event, horizontalFields);
        result.scrollPhase = CGEventGetIntegerValueField(event, kCGScrollWheelEventScrollPhase);
        result.momentumPhase = CGEventGetIntegerValueField(event, kCGScrollWheelEventMomentumPhase);
        result.directionInverted = isDirectionInvertedFromDevice(event);
    } else {
        result.button = CGEventGetIntegerValueField(event, kCGMouseEventButtonNumber);
    }
    if (mayBeGivenBack(type))
        result.native = CfRef<CGEventRef>::adopt(CGEventCreateCopy(event)).share();
    return result;
}

void writeScroll(CGEventRef event, const PointerEvent& before, const PointerEvent& after) {
    if (after.vertical != before.vertical)
        writeAxis(event, verticalFields, after.vertical);
    if (after.horizontal != before.horizontal)
        writeAxis(event, horizontalFields, after.horizontal);
}

CfRef<CGEventRef> postableEvent(const PointerEvent& event) {
    if (!event.native)
        return {};
    // The functions take events without const even where they only read.
    auto* native = static_cast<CGEventRef>(const_cast<void*>(event.native.get()));
    auto copy = CfRef<CGEventRef>::adopt(CGEventCreateCopy(native));
    if (copy) {
        CGEventSetLocation(copy.get(), CGPointMake(event.location.x, event.location.y));
        CGEventSetIntegerValueField(copy.get(), kCGEventSourceUserData, event.marker);
    }
    return copy;
}

} // namespace tarvik
