// The agent's life: it starts the gestures as soon as it may, shows their state in the status item, and opens the
// preferences.
#pragma once

#include "app/repeating_timer.h"
#include "model/wording.h"
#include "ports/activity.h"
#include "ports/status_item.h"
#include "ports/task_queue.h"
#include "preferences/preferences_window.h"
#include "services/permissions.h"
#include "services/updater.h"
#include "settings/settings.h"
#include "support/log.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tarvik {

/// Main thread.
class AppDelegate {
public:
    struct Parts {
        Settings& settings;
        Permissions& permissions;
        Updater& updater;
        StatusItem& statusItem;
        MainQueue& mainQueue;
        Activity& activity;
        const Wording& wording;
        LogSink& log;
        LogSink& systemLog;
    };
    struct Hooks {
        /// Starts the gestures; true when they are started, already or newly.
        std::function<bool()> startEngine;
        /// Whether they are.
        std::function<bool()> engineRuns;
        /// Null when there can be none; the reason is in the log then.
        std::function<std::unique_ptr<PreferencesWindow>()> makePreferences;
        /// Ends the program.
        std::function<void()> terminate;
        /// Ends it as soon as no button is held, for the program that has replaced it.
        std::function<void()> makeWay;
    };

    AppDelegate(const Parts& parts, Hooks hooks) : parts_(parts), hooks_(std::move(hooks)) {}
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    void applicationDidFinishLaunching();
    /// The program was started again while it runs.
    void applicationShouldHandleReopen() { showPreferences(); }
    /// An update was installed: it takes over at once, or when the preferences are closed.
    void programWasReplaced();
    /// The menu, made anew each time it opens.
    std::vector<MenuItem> menuNeedsUpdate();

    void toggleEnabled();
    void grantPermission();
    void openPreferences() { showPreferences(); }
    void checkForUpdates() { parts_.updater.checkForUpdates(); }

private:
    void showPreferences();
    void updateIcon();
    /// Starts the gestures, or waits until they can be started.
    void startEngine();
    /// Looks every second whether the permission is there. Restarts the wait that may be under way.
    void waitForPermission();
    void checkPermission();

    const Parts parts_;
    const Hooks hooks_;
    std::unique_ptr<PreferencesWindow> prefsWindow_;
    std::optional<RepeatingTimer> permissionTimer_;
    Subscription enabledSubscription_;
};

} // namespace tarvik
