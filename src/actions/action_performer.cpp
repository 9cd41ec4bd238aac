#include "actions/action_performer.h"

#include "actions/key_sequence.h"
#include "actions/window_actions.h"

#include <string>

namespace tarvik {

ActionPerformer::ActionPerformer(const Vocabulary& vocabulary, const ActionPorts& ports, LogSink& log)
    : vocabulary_(vocabulary)
    , ports_(ports)
    , log_(log)
    , keyNames_(vocabulary.keyStyle, [&layout = ports.layout](std::uint16_t code) { return layout.character(code); }) {}

void ActionPerformer::perform(const GestureAction& action, std::optional<Point> point) {
    log_.write("perform " + Gesture::title(action, vocabulary_, keyNames_));
    const auto& row = vocabulary_[action.kind];
    switch (row.route) {
    case Route::nothing:
        break;
    case Route::keys:
        performKeys(row);
        break;
    case Route::shell:
        performShell(row);
        break;
    case Route::window:
        performWindow(row, point);
        break;
    case Route::recorded:
        if (action.custom)
            post(*action.custom);
        break;
    }
}

void ActionPerformer::post(const KeyShortcut& shortcut) { ports_.keys.post(keySequence(shortcut)); }

KeyShortcut ActionPerformer::resolved(const BuiltinKeys& keys) const {
    auto shortcut = keys.shortcut;
    if (keys.letter != 0)
        shortcut.keyCode = ports_.layout.positionOf(keys.letter).value_or(shortcut.keyCode);
    return shortcut;
}

void ActionPerformer::performKeys(const ActionRow& row) {
    if (!row.shortcut)
        return;
    auto shortcut = resolved(*row.shortcut);
    if (row.inTerminal != InTerminal::same && ports_.workspace.frontmostIsTerminal()) {
        if (row.inTerminal == InTerminal::nothing)
            return;
        shortcut.modifiers |= flags::shift;
    }
    post(shortcut);
}

void ActionPerformer::performShell(const ActionRow& row) {
    if (ports_.shell.perform(row.kind))
        return;
    if (row.fallback) {
        const auto shortcut = resolved(*row.fallback);
        log_.write(std::string(vocabulary_.shellFailed) + keyNames_.displayString(shortcut));
        post(shortcut);
    } else if (!vocabulary_.shellFailedWithoutKeys.empty()) {
        log_.write(vocabulary_.shellFailedWithoutKeys);
    }
}

void ActionPerformer::performWindow(const ActionRow& row, std::optional<Point> point) {
    const auto window = ports_.windows.targetWindow(point);
    if (!needsFallback(row.kind, window.get(), ports_.screens, log_) || !row.fallback)
        return;
    const auto shortcut = resolved(*row.fallback);
    if (row.kind == ActionKind::minimizeWindow)
        log_.write(std::string(vocabulary_.minimizeFailed) + keyNames_.displayString(shortcut));
    post(shortcut);
}

} // namespace tarvik
