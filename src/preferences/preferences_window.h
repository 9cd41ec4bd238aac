// The preferences window, as the rest of the program knows it.
#pragma once

#include "model/key_names.h"
#include "model/vocabulary.h"
#include "model/wording.h"
#include "ports/activation.h"
#include "ports/appearance.h"
#include "ports/applications.h"
#include "ports/key_monitor.h"
#include "services/gesture_recorder.h"
#include "services/permissions.h"
#include "services/updater.h"
#include "settings/settings.h"
#include "support/log.h"

#include <functional>
#include <memory>

namespace tarvik {

/// What the window shows and changes. Everything outlives the window.
struct PreferencesContext {
    Settings& settings;
    Permissions& permissions;
    Updater& updater;
    GestureRecorder& recorder;
    Applications& applications;
    KeyMonitor& keyMonitor;
    Activation& activation;
    Appearance& appearance;
    const Vocabulary& vocabulary;
    const Wording& wording;
    const KeyNames& keyNames;
};

/// Main thread.
class PreferencesWindow {
public:
    virtual ~PreferencesWindow() = default;
    /// On screen, in front of everything, with the keyboard focus. Closing it only hides it.
    virtual void show() = 0;
    /// Runs the task once: now, or when the window that is on screen is closed. Replaces a task that waits.
    virtual void whenClosed(std::function<void()> task) = 0;
};

/// The view toolkit costs memory that an agent whose window is never opened should not pay: the window lives in a
/// module that the first call loads. Null when it cannot be loaded; the reason is in the log.
std::unique_ptr<PreferencesWindow> loadPreferencesWindow(const PreferencesContext& context, LogSink& log);

} // namespace tarvik
