// Buttons, as the server numbers them and as the engine hears of them.
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

/// Of any button but those of the wheel: PointerEvent's number, and the event.
constexpr std::int64_t buttonOf(int xButton) {
    return xButton <= 3 ? (xButton == 1 ? 0 : xButton == 2 ? 2 : 1) : xButton - 5; // 4 to 7 are the wheel
}
constexpr PointerEventType typeOf(int xButton, bool press) {
    using enum PointerEventType;
    if (xButton == 1)
        return press ? leftDown : leftUp;
    if (xButton == 3)
        return press ? rightDown : rightUp;
    return press ? otherDown : otherUp;
}

} // namespace tarvik
