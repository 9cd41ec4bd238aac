// The decision tables of the four actions that act on one window.
#pragma once

#include "model/action_kind.h"
#include "ports/screens.h"
#include "ports/windows.h"
#include "support/log.h"

#include <string>
#include <vector>

namespace tarvik {

/// Whether a frame fills one of the screens, within 2 points (screen by screen, in its own points).
bool coversScreen(const Rect& frame, const std::vector<Screen>& screens);

/// Carries one of the window kinds out on `window`, which may be null. True when keys have to be posted instead: the
/// toggle and minimise fall back even without a window; enter and exit do nothing without one, and go by the window's
/// frame only when its state is unknown.
bool needsFallback(ActionKind kind, Window* window, const Screens& screens, LogSink& log);

} // namespace tarvik
