#pragma once

#include "macos/sim/world.h"

namespace tarvik::sim {

struct Event : Object {
    explicit Event(EventData d) : Object(eventType), data(std::move(d)) {}
    EventData data;
};

} // namespace tarvik::sim
