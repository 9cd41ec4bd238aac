#include "platform/macos/quartz_key_poster.h"

#include "platform/macos/cf_ref.h"
#include "ports/pointer_event.h"

#include <ApplicationServices/ApplicationServices.h>

namespace tarvik {

void QuartzKeyPoster::post(const std::vector<KeyEvent>& events) {
    const auto source = CfRef<CGEventSourceRef>::adopt(CGEventSourceCreate(kCGEventSourceStateHIDSystemState));
    // Otherwise the system would hold back the user's own events for a quarter of a second after each of ours.
    if (source)
        CGEventSourceSetLocalEventsSuppressionInterval(source.get(), 0);
    for (const auto& event : events) {
        const auto key =
            CfRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(source.get(), CGKeyCode{event.code}, event.down));
        if (!key)
            continue;
        CGEventSetFlags(key.get(), CGEventFlags{event.flags});
        CGEventSetIntegerValueField(key.get(), kCGEventSourceUserData, selfEventMarker);
        CGEventPost(kCGHIDEventTap, key.get());
    }
}

} // namespace tarvik
