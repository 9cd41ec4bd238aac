// What the application framework tells of a wheel event, where there is none.
#include "platform/macos/scroll_direction.h"

#include "macos/sim/events.h"

namespace tarvik {

bool isDirectionInvertedFromDevice(CGEventRef wheelEvent) {
    return sim::object<sim::Event>(wheelEvent).data.directionInverted;
}

} // namespace tarvik
