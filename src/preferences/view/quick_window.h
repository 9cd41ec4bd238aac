// The preferences window, made of the toolkit's declarative views.
#pragma once

#include "preferences/preferences_window.h"
#include "preferences/view/action_choices.h"
#include "preferences/view/excluded_apps.h"
#include "preferences/view/gesture_list.h"
#include "preferences/view/gesture_recording.h"
#include "preferences/view/look_view.h"
#include "preferences/view/permission_view.h"
#include "preferences/view/settings_view.h"
#include "preferences/view/shortcut_capture.h"
#include "preferences/view/texts.h"
#include "preferences/view/updater_view.h"

#include <QQmlEngine>
#include <QQuickView>

#include <functional>
#include <memory>

namespace tarvik {

/// One at a time in a process.
class QuickWindow final : public PreferencesWindow {
public:
    static std::unique_ptr<QuickWindow> make(const PreferencesContext& context, LogSink& log);
    ~QuickWindow() override;

    void show() override;
    void whenClosed(std::function<void()> task) override;

private:
    explicit QuickWindow(const PreferencesContext& context);

    void offerToViews();
    bool load(LogSink& log);

    Activation& activation_;
    Permissions& permissions_;
    Applications& applications_;
    SettingsView settings_;
    GestureList gestures_;
    ActionChoices choices_;
    GestureRecording recording_;
    ShortcutCapture capture_;
    ExcludedApps excludedApps_;
    PermissionView permission_;
    UpdaterView updater_;
    LookView look_;
    Texts texts_;
    std::function<void()> closed_;
    // Before what it binds to.
    std::unique_ptr<QQuickView> view_;
};

} // namespace tarvik
