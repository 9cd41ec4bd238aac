#include "macos/sim/world.h"

namespace tarvik::sim {

World& world() {
    static World world;
    return world;
}

void reset() { world() = World(); }

std::int64_t EventData::integer(CGEventField field) const {
    const auto found = integers.find(field);
    return found == integers.end() ? 0 : found->second;
}

double EventData::floating(CGEventField field) const {
    const auto found = doubles.find(field);
    return found == doubles.end() ? 0 : found->second;
}

EventData mouse(CGEventType type, CGPoint location, std::int64_t button, std::int64_t clicks) {
    EventData event;
    event.type = type;
    event.location = location;
    event.integers = {{kCGMouseEventButtonNumber, button}, {kCGMouseEventClickState, clicks}};
    event.doubles = {{kCGMouseEventPressure, 0.5}};
    return event;
}

EventData wheel(std::int64_t lines, std::int64_t points, double fixed, bool horizontal) {
    EventData event;
    event.type = kCGEventScrollWheel;
    event.integers = {{horizontal ? kCGScrollWheelEventDeltaAxis2 : kCGScrollWheelEventDeltaAxis1, lines},
                      {horizontal ? kCGScrollWheelEventPointDeltaAxis2 : kCGScrollWheelEventPointDeltaAxis1, points}};
    event.doubles = {{horizontal ? kCGScrollWheelEventFixedPtDeltaAxis2 : kCGScrollWheelEventFixedPtDeltaAxis1, fixed}};
    return event;
}

} // namespace tarvik::sim
