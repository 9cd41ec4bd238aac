// The composition root: everything that there is, and who talks to whom.
#include "actions/action_performer.h"
#include "actions/queued_actions.h"
#include "engine/gesture_engine.h"
#include "overlay/trail_mailbox.h"
#include "overlay/trail_overlay.h"
#include "ports/platform.h"
#include "settings/settings.h"
#include "support/log.h"

#include <chrono>
#include <cstdlib>
#include <functional>

int main(int argc, char** argv) {
    using namespace tarvik;

    Log log(logFile());
    const auto platform = makePlatform(argc, argv, log);
    if (!platform)
        return EXIT_FAILURE;
    log.write("launched");

    // Gestures end here.
    ActionPerformer performer(platform->vocabulary(),
                              {platform->keys(), platform->layout(), platform->shell(), platform->windows(),
                               platform->workspace(), platform->screens()},
                              log);
    QueuedActions actions(platform->actionQueue(), performer);

    // What shows while drawing: the tap's thread leaves the newest state, the main thread paints it.
    TrailOverlay overlay(platform->screens(), platform->trailPanels());
    TrailMailbox trail([&] { platform->mainQueue().post([&] { trail.deliver(overlay); }); });

    // Gestures begin here.
    GestureEngine engine(platform->tap(), trail, actions, platform->frontmost(), log);

    // Every change of a setting acts on the next event.
    Settings settings(platform->defaults(), platform->loginItem(), platform->systemLog());
    const KeyNames keyNames(platform->vocabulary().keyStyle,
                            [&](std::uint16_t code) { return platform->layout().character(code); });
    const auto publish = [&] {
        platform->tap().run([&engine, snapshot = settings.snapshot(platform->vocabulary(), keyNames)] {
            engine.setPreferences(snapshot);
        });
    };
    publish();
    const auto subscription = settings.observe([&](Setting) { publish(); });
    platform->onLayoutChange(publish);

    // A refused tap is asked for again every second.
    const std::function<void()> start = [&] {
        if (!engine.start())
            platform->mainQueue().after(std::chrono::seconds(1), start);
    };
    start();

    const int exitCode = platform->run();
    platform->stop();
    log.write("ended");
    return exitCode;
}
