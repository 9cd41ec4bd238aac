// Quartz events and their sources.
#include "macos/sim/events.h"

namespace tarvik::sim {
namespace {

struct EventSource : Object {
    EventSource() : Object(eventSourceType) {}
};

EventData& data(CGEventRef event) { return object<Event>(event).data; }

/// Quartz makes the other two deltas of an axis from the line delta.
void deriveDeltas(EventData& event, CGEventField field, std::int64_t lines) {
    const bool vertical = field == kCGScrollWheelEventDeltaAxis1;
    if (!vertical && field != kCGScrollWheelEventDeltaAxis2)
        return;
    event.integers[vertical ? kCGScrollWheelEventPointDeltaAxis1 : kCGScrollWheelEventPointDeltaAxis2] = 7 * lines;
    event.doubles[vertical ? kCGScrollWheelEventFixedPtDeltaAxis1 : kCGScrollWheelEventFixedPtDeltaAxis2] =
        0.7 * static_cast<double>(lines);
}

} // namespace
} // namespace tarvik::sim

using namespace tarvik::sim;

extern "C" {

CGEventRef CGEventCreateCopy(CGEventRef event) {
    return world().refuseCopies ? nullptr : create<Event, CGEventRef>(data(event));
}
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode key, bool down) {
    if (source)
        object<EventSource>(source);
    if (world().refuseKeyEvents)
        return nullptr;
    EventData event;
    event.type = down ? kCGEventKeyDown : kCGEventKeyUp;
    event.flags = 0xFF000000; // whatever the user happens to hold
    event.integers[kCGKeyboardEventKeycode] = key;
    return create<Event, CGEventRef>(event);
}
CGPoint CGEventGetLocation(CGEventRef event) { return data(event).location; }
void CGEventSetLocation(CGEventRef event, CGPoint location) { data(event).location = location; }
void CGEventSetFlags(CGEventRef event, CGEventFlags flags) { data(event).flags = flags; }
std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field) { return data(event).integer(field); }
double CGEventGetDoubleValueField(CGEventRef event, CGEventField field) { return data(event).floating(field); }
void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, std::int64_t value) {
    data(event).integers[field] = value;
    deriveDeltas(data(event), field, value);
    data(event).written.push_back(field);
}
void CGEventSetDoubleValueField(CGEventRef event, CGEventField field, double value) {
    data(event).doubles[field] = value;
    data(event).written.push_back(field);
}

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID state) {
    world().sourceStates.push_back(state);
    return create<EventSource, CGEventSourceRef>();
}
void CGEventSourceSetLocalEventsSuppressionInterval(CGEventSourceRef source, CFTimeInterval seconds) {
    object<EventSource>(source);
    world().suppressionIntervals.push_back(seconds);
}

} // extern "C"
