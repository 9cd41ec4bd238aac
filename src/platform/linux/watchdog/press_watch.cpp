#include "platform/linux/watchdog/press_watch.h"

#include "platform/linux/x11/xi_event.h"

#include <X11/extensions/XInput2.h>

namespace tarvik {

PressWatch::PressWatch(const X11Connection& x) : display_(x.display()), opcode_(xiOpcode(display_)) {
    if (!opcode_)
        return;
    unsigned char bits[XIMaskLen(XI_RawButtonPress)] = {};
    XISetMask(bits, XI_RawButtonPress);
    XIEventMask mask{XIAllDevices, sizeof bits, bits};
    XISelectEvents(display_, x.root(), &mask, 1);
    XFlush(display_);
}

std::optional<RawPress> PressWatch::next() {
    while (opcode_ && XPending(display_) > 0) {
        XEvent other;
        const auto event = nextXiEvent(display_, *opcode_, other);
        if (event && event->type == XiEventType::rawPress && !isWheelButton(event->button))
            return RawPress{event->source, event->button};
    }
    return std::nullopt;
}

} // namespace tarvik
