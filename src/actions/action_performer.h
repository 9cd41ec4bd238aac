// Carries out one action: keys, an operation of the desktop, or an operation on a window, each with its fallback.
#pragma once

#include "model/gesture.h"
#include "model/vocabulary.h"
#include "ports/desktop_shell.h"
#include "ports/key_poster.h"
#include "ports/keyboard_layout.h"
#include "ports/screens.h"
#include "ports/windows.h"
#include "ports/workspace.h"
#include "support/log.h"

#include <optional>

namespace tarvik {

/// What the performer asks of the platform.
struct ActionPorts {
    KeyPoster& keys;
    KeyboardLayout& layout;
    DesktopShell& shell;
    Windows& windows;
    Workspace& workspace;
    const Screens& screens;
};

/// No state of its own. Called on the actions' thread.
class ActionPerformer {
public:
    ActionPerformer(const Vocabulary& vocabulary, const ActionPorts& ports, LogSink& log);

    /// `point`, in event-location units, only helps to find the target window.
    void perform(const GestureAction& action, std::optional<Point> point);
    void post(const KeyShortcut& shortcut);

private:
    KeyShortcut resolved(const BuiltinKeys& keys) const;
    void performKeys(const ActionRow& row);
    void performShell(const ActionRow& row);
    void performWindow(const ActionRow& row, std::optional<Point> point);

    const Vocabulary& vocabulary_;
    ActionPorts ports_;
    LogSink& log_;
    KeyNames keyNames_;
};

} // namespace tarvik
