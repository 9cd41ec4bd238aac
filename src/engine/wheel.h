// What the wheel does: stepping while the gesture button is held, reversal at all other times. Pure functions.
#pragma once

#include "model/action_kind.h"
#include "model/preferences.h"
#include "ports/pointer_event.h"

#include <chrono>
#include <cstdint>

namespace tarvik {

/// A step that comes no later than this after the last one is dropped, so that a burst of wheel events is one step.
inline constexpr std::chrono::nanoseconds wheelDebounce = std::chrono::milliseconds(120);

/// The action of one wheel step. `lines` is the line delta as the fingers made it, not 0; `binding` is not `none`.
ActionKind wheelAction(ScrollBinding binding, std::int64_t lines);

/// The vertical line delta with the inversion of "natural scrolling" taken out.
std::int64_t physicalLines(const PointerEvent& event);

/// Reverses the wheel per axis. Events of touch surfaces, known by their phases, are left alone.
void reverseScrollIfNeeded(PointerEvent& event, const Preferences& preferences);

} // namespace tarvik
