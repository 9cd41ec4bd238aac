// Everything that there is, and who talks to whom.
#pragma once

#include "actions/action_performer.h"
#include "actions/queued_actions.h"
#include "app/app_delegate.h"
#include "engine/gesture_engine.h"
#include "model/key_names.h"
#include "overlay/trail_mailbox.h"
#include "overlay/trail_overlay.h"
#include "ports/platform.h"
#include "preferences/preferences_window.h"
#include "services/gesture_recorder.h"
#include "services/permissions.h"
#include "services/updater.h"
#include "settings/settings.h"
#include "support/log.h"

namespace tarvik {

/// Main thread. What stands further down uses what stands above it.
class Composition {
public:
    /// Both must outlive it.
    Composition(Platform& platform, LogSink& log);
    Composition(const Composition&) = delete;
    Composition& operator=(const Composition&) = delete;

    /// The program's life; its exit code.
    int run();

private:
    /// Hands the settings to the engine, for its next event.
    void publish();
    /// Paints the newest state of the trail, and again after a pause for as long as it changes.
    void paintTrail();

    Platform& platform_;
    LogSink& log_;

    // Gestures end here.
    ActionPerformer performer_;
    QueuedActions actions_;

    // What shows while drawing: the tap's thread leaves the newest state, the main thread paints it.
    TrailOverlay overlay_;
    TrailMailbox trail_;

    // Gestures begin here.
    GestureEngine engine_;

    // What the user decides.
    Settings settings_;
    const KeyNames keyNames_;
    Subscription settingsSubscription_;

    // What the user sees of it.
    Permissions permissions_;
    Updater updater_;
    GestureRecorder recorder_;
    AppDelegate delegate_;
};

} // namespace tarvik
