#include "app/composition.h"

#include <utility>

namespace tarvik {

Composition::Composition(Platform& platform, LogSink& log)
    : platform_(platform)
    , log_(log)
    , performer_(platform.vocabulary(),
                 {platform.keys(), platform.layout(), platform.shell(), platform.windows(), platform.workspace(),
                  platform.screens()},
                 log)
    , actions_(platform.actionQueue(), performer_)
    , overlay_(platform.screens(), platform.trailPanels())
    , trail_([this] { platform_.mainQueue().post([this] { paintTrail(); }); })
    , engine_(platform.tap(), trail_, actions_, platform.frontmost(), log,
              [this] { platform_.mainQueue().post([this] { settings_.setEnabled(false); }); })
    , settings_(platform.defaults(), platform.loginItem(), platform.systemLog())
    , keyNames_(platform.vocabulary().keyStyle,
                [this](std::uint16_t code) { return platform_.layout().character(code); })
    , permissions_(platform.permission())
    , updater_(platform.updateChannel(), platform.activation())
    , recorder_(
          [this](GestureRecorder::Handler handler) {
              platform_.tap().run([this, handler = std::move(handler)] { engine_.setOnRecord(handler); });
          },
          platform.mainQueue())
    , delegate_({settings_, permissions_, updater_, platform.statusItem(), platform.mainQueue(), platform.activity(),
                 platform.wording(), log, platform.systemLog()},
                {[this] { return engine_.start(); }, [this] { return platform_.tap().installed(); },
                 [this] {
                     return loadPreferencesWindow({settings_, permissions_, updater_, recorder_,
                                                   platform_.applications(), platform_.keyMonitor(),
                                                   platform_.activation(), platform_.appearance(),
                                                   platform_.vocabulary(), platform_.wording(), keyNames_},
                                                  log_);
                 },
                 [this] { platform_.terminate(); }, [this] { platform_.makeWay(); }}) {}

int Composition::run() {
    publish();
    settingsSubscription_ = settings_.observe([this](Setting) { publish(); });
    platform_.onLayoutChange([this] { publish(); });
    platform_.onReopen([this] { delegate_.applicationShouldHandleReopen(); });
    platform_.onReplaced([this] { delegate_.programWasReplaced(); });
    delegate_.applicationDidFinishLaunching();

    const int exitCode = platform_.run();
    platform_.stop();
    log_.write("ended");
    return exitCode;
}

void Composition::publish() {
    platform_.tap().run(
        [this, snapshot = settings_.snapshot(platform_.vocabulary(), keyNames_)] { engine_.setPreferences(snapshot); });
}

void Composition::paintTrail() {
    const auto pause = platform_.trailPanels().pause();
    while (trail_.deliver(overlay_)) {
        if (pause.count() > 0)
            return platform_.mainQueue().after(pause, [this] { paintTrail(); });
    }
}

} // namespace tarvik
