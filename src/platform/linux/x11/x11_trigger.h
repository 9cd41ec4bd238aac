// The gesture button, as the server numbers it and as the engine hears of it.
#pragma once

#include "model/preferences.h"
#include "ports/pointer_event.h"

#include <cstdint>

namespace tarvik {

struct Trigger {
    /// The server's number for what the user means, whatever the hand.
    int xButton;
    /// PointerEvent's.
    std::int64_t button;
    PointerEventType down, drag, up;
};

constexpr Trigger triggerOf(TriggerButton button) {
    using enum PointerEventType;
    return button == TriggerButton::right ? Trigger{3, 1, rightDown, rightDragged, rightUp}
                                          : Trigger{2, 2, otherDown, otherDragged, otherUp};
}

} // namespace tarvik
