#include "engine/wheel.h"

#include <cstdlib>

namespace tarvik {
namespace {

/// The most negative integer has no counterpart: no device can send it, so it is a programming error and ends the
/// process.
std::int64_t negated(std::int64_t value) {
    std::int64_t result = 0;
    if (__builtin_sub_overflow(std::int64_t{0}, value, &result))
        std::abort();
    return result;
}

void reverse(ScrollDelta& delta) {
    delta.line = negated(delta.line);
    delta.point = negated(delta.point);
    delta.fixed = -delta.fixed;
}

} // namespace

ActionKind wheelAction(ScrollBinding binding, std::int64_t lines) {
    const bool up = lines > 0;
    switch (binding) {
    case ScrollBinding::tabs:
        return up ? ActionKind::previousTab : ActionKind::nextTab;
    case ScrollBinding::spaces:
        return up ? ActionKind::spaceLeft : ActionKind::spaceRight;
    case ScrollBinding::windows:
        return up ? ActionKind::previousWindow : ActionKind::nextWindow;
    case ScrollBinding::none:
        break;
    }
    return ActionKind::none;
}

std::int64_t physicalLines(const PointerEvent& event) {
    return event.directionInverted ? negated(event.vertical.line) : event.vertical.line;
}

void reverseScrollIfNeeded(PointerEvent& event, const Preferences& preferences) {
    if (event.scrollPhase != 0 || event.momentumPhase != 0)
        return;
    if (preferences.reverseVertical)
        reverse(event.vertical);
    if (preferences.reverseHorizontal)
        reverse(event.horizontal);
}

} // namespace tarvik
