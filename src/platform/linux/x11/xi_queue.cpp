#include "platform/linux/x11/xi_queue.h"

#include <algorithm>

namespace tarvik {

void XiQueue::pull() {
    while (XPending(display_) > 0) {
        XEvent other;
        if (const auto event = nextXiEvent(display_, opcode_, other))
            events_.push_back(*event);
        else if (other.type != GenericEvent)
            other_(other);
    }
}

bool XiQueue::tellsOfDevices() const {
    return std::any_of(events_.begin(), events_.end(),
                       [](const XiEvent& event) { return event.type == XiEventType::devicesChanged; });
}

} // namespace tarvik
