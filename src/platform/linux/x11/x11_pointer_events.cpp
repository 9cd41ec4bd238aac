#include "platform/linux/x11/x11_pointer_events.h"

#include <cmath>
#include <memory>
#include <vector>

namespace tarvik {
namespace {

/// What a swallowed press needs to be given back.
struct NativePress {
    int source;
    int master;
    int xButton;
};

double unitsPerPointAt(Point location, const std::vector<Screen>& screens) {
    for (const auto& screen : screens) {
        if (screen.frame.contains(location))
            return screen.unitsPerPoint;
    }
    return screens.empty() ? 1 : screens.front().unitsPerPoint;
}

} // namespace

PointerEvent X11PointerEvents::make(const XiEvent& event, PointerEventType type, std::int64_t button) {
    if (event.time != CurrentTime)
        now_ = clock_.widen(event.time);
    auto result = notice(type);
    result.button = button;
    result.location = event.location;
    if (event.type == XiEventType::press && !isWheelButton(event.button)) {
        result.unitsPerPoint = unitsPerPointAt(event.location, screens_.screens());
        result.native = std::make_shared<const NativePress>(NativePress{event.source, event.master, event.button});
    }
    return result;
}

PointerEvent X11PointerEvents::notice(PointerEventType type) const {
    PointerEvent result;
    result.type = type;
    result.time = now_;
    return result;
}

ReturnedClick X11PointerEvents::returned(const PointerEvent& press, bool unsure) {
    const auto& native = *static_cast<const NativePress*>(press.native.get());
    return {native.xButton,
            native.source,
            native.master,
            static_cast<int>(std::floor(press.location.x)),
            static_cast<int>(std::floor(press.location.y)),
            unsure};
}

} // namespace tarvik
