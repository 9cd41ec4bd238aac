#include "actions/window_actions.h"

#include <algorithm>

namespace tarvik {
namespace {

/// Points by which a window that fills a screen may miss it.
constexpr double tolerance = 2;

bool covers(const Rect& frame, const Screen& screen) {
    const double margin = tolerance * screen.unitsPerPoint;
    return screen.frame.enlarged(margin).contains(frame) && frame.width >= screen.frame.width - margin &&
           frame.height >= screen.frame.height - margin;
}

bool setFullScreen(Window& window, bool on, LogSink& log) {
    const int error = window.setFullScreen(on);
    log.write(std::string("set full screen ") + (on ? "true" : "false") + " on " + window.describe() + " -> " +
              std::to_string(error));
    return error == 0;
}

bool fills(const Window& window, const Screens& screens) {
    const auto frame = window.frame();
    return frame && coversScreen(*frame, screens.screens());
}

bool minimize(Window* window, LogSink& log) {
    if (!window)
        return false;
    const int error = window->minimize();
    log.write("minimize " + window->describe() + " -> " + std::to_string(error));
    return error == 0;
}

bool toggleFullScreen(Window* window, LogSink& log) {
    if (!window)
        return false;
    const auto state = window->isFullScreen();
    return state && setFullScreen(*window, !*state, log);
}

bool enterNeedsFallback(Window& window, const Screens& screens, LogSink& log) {
    const auto state = window.isFullScreen();
    if (!state)
        return !fills(window, screens);
    if (*state) {
        log.write("enter full screen: window is already full screen");
        return false;
    }
    return !setFullScreen(window, true, log);
}

bool exitNeedsFallback(Window& window, const Screens& screens, LogSink& log) {
    const auto state = window.isFullScreen();
    if (!state)
        return fills(window, screens);
    if (!*state) {
        log.write("exit full screen: window is not full screen");
        return false;
    }
    return !setFullScreen(window, false, log);
}

} // namespace

bool coversScreen(const Rect& frame, const std::vector<Screen>& screens) {
    return std::any_of(screens.begin(), screens.end(), [&](const Screen& screen) { return covers(frame, screen); });
}

bool needsFallback(ActionKind kind, Window* window, const Screens& screens, LogSink& log) {
    switch (kind) {
    case ActionKind::minimizeWindow:
        return !minimize(window, log);
    case ActionKind::fullScreen:
        return !toggleFullScreen(window, log);
    case ActionKind::enterFullScreen:
        return window && enterNeedsFallback(*window, screens, log);
    case ActionKind::exitFullScreen:
        return window && exitNeedsFallback(*window, screens, log);
    default:
        return false;
    }
}

} // namespace tarvik
