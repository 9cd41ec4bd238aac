// A Linux desktop under X11: which adapter stands behind which port, and on which thread.

// The toolkit first: Xlib's macros would take its names away.
#include <QApplication>
#include <QPalette>
#include <QSocketNotifier>

#include "platform/linux/common/desktop_appearance.h"
#include "platform/linux/common/desktop_notice.h"
#include "platform/linux/common/feed_configuration.h"
#include "platform/linux/common/feed_update_channel.h"
#include "platform/linux/common/program_watch.h"
#include "platform/linux/common/qt_key_monitor.h"
#include "platform/linux/common/qt_main_queue.h"
#include "platform/linux/common/restart_report.h"
#include "platform/linux/common/single_instance.h"
#include "platform/linux/common/termination_signals.h"
#include "platform/linux/common/tray_status_item.h"
#include "platform/linux/common/watchdog_process.h"
#include "platform/linux/x11/x11_activation.h"

#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/common/ini_defaults_store.h"
#include "platform/linux/common/no_activity.h"
#include "platform/linux/common/paths.h"
#include "platform/linux/common/standard_error_log.h"
#include "platform/linux/common/user_guide.h"
#include "platform/linux/common/user_programs.h"
#include "platform/linux/common/worker.h"
#include "platform/linux/common/xdg_login_item.h"
#include "platform/linux/process/privileges.h"
#include "platform/linux/x11/x11_actions_platform.h"
#include "platform/linux/x11/x11_application_list.h"
#include "platform/linux/x11/x11_event_tap.h"
#include "platform/linux/x11/x11_keyboard_layout.h"
#include "platform/linux/x11/x11_main_connection.h"
#include "platform/linux/x11/x11_permission.h"
#include "platform/linux/x11/x11_screens.h"
#include "platform/linux/x11/x11_selection_watch.h"
#include "platform/linux/x11/x11_toolkit.h"
#include "platform/linux/x11/x11_trail_panels.h"
#include "ports/platform.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tarvik {
namespace {

class LinuxPlatform final : public Platform {
public:
    /// `actions` was opened first, as the proof that there is a display.
    LinuxPlatform(std::unique_ptr<QApplication> application, std::unique_ptr<SingleInstance> instance, LogSink& log,
                  std::shared_ptr<const DesktopEntries> entries, std::unique_ptr<X11ActionsPlatform> actions,
                  const RecentEnds& history);

    const Vocabulary& vocabulary() const override { return linuxVocabulary(); }
    const Wording& wording() const override { return linuxWording(); }
    LogSink& systemLog() override { return systemLog_; }
    DefaultsStore& defaults() override { return defaults_; }
    LoginItem& loginItem() override { return loginItem_; }
    MainQueue& mainQueue() override { return mainQueue_; }
    TaskQueue& actionQueue() override { return *worker_; }

    EventTap& tap() override { return tap_; }
    const Frontmost& frontmost() const override { return tap_.frontmost(); }
    Screens& screens() override { return screens_; }
    TrailPanels& trailPanels() override { return panels_; }

    KeyPoster& keys() override { return actions_->keys(); }
    KeyboardLayout& layout() override { return layout_; }
    void onLayoutChange(std::function<void()> handler) override { layoutChanged_ = std::move(handler); }
    DesktopShell& shell() override { return actions_->shell(); }
    Windows& windows() override { return actions_->windows(); }
    Workspace& workspace() override { return actions_->workspace(); }
    Applications& applications() override { return applications_; }
    KeyMonitor& keyMonitor() override { return keyMonitor_; }
    Appearance& appearance() override { return appearance_; }

    StatusItem& statusItem() override { return statusItem_; }
    Permission& permission() override { return permission_; }
    Activity& activity() override { return activity_; }
    Activation& activation() override { return activation_; }
    UpdateChannel* updateChannel() override { return updates_ ? &*updates_ : nullptr; }

    void onReopen(std::function<void()> handler) override { instance_->onReopen(std::move(handler)); }
    void onReplaced(std::function<void()> handler) override { replaced_ = std::move(handler); }
    void terminate() override { QCoreApplication::quit(); }
    void makeWay() override;
    int run() override;
    void stop() override;
    std::function<int()> successor() override;

private:
    LogSink& log_;
    std::unique_ptr<QApplication> application_;
    std::unique_ptr<SingleInstance> instance_;
    QtMainQueue mainQueue_;
    TerminationSignals signals_;
    StandardErrorLog systemLog_;
    IniDefaultsStore defaults_;
    XdgLoginItem loginItem_;
    std::function<void()> layoutChanged_;
    X11KeyboardLayout layout_;
    QSocketNotifier layoutNotifier_;
    const X11QuietToolkit quietToolkit_;
    X11MainConnection connection_;
    X11Screens screens_;
    X11TrailPanels panels_;
    std::unique_ptr<X11ActionsPlatform> actions_;
    std::optional<Worker> worker_;
    X11ApplicationList applications_;
    QtKeyMonitor keyMonitor_;
    DesktopAppearance appearance_;
    X11Permission permission_;
    NoActivity activity_;
    X11Activation activation_;
    DesktopNotice notice_;
    std::optional<FeedUpdateChannel> updates_;
    TrayStatusItem statusItem_;
    X11SelectionWatch olderTray_;
    X11EventTap tap_;
    WatchdogProcess watchdog_;
    std::function<void()> replaced_ = [] {};
    ProgramWatch program_;
    bool hasSuccessor_ = false;
};

constexpr auto displayGone = "the display server has gone; ending";

/// The session is over. Nothing is pending: every setting was written when it changed, and what the server held for us
/// it has released.
[[noreturn]] void endWithTheDisplay(LogSink& log) {
    log.write(displayGone);
    log.flush();
    std::_Exit(EXIT_FAILURE);
}

/// While the main loop runs: the toolkit, when it is the first to find the display gone, calls exit() by itself.
LogSink* logOfAnEarlyExit = nullptr;

void logEarlyExit() {
    if (!logOfAnEarlyExit)
        return;
    logOfAnEarlyExit->write(displayGone);
    logOfAnEarlyExit->flush();
}

/// What the colour of a panel is nobody tells. Those of GNOME are dark whatever the desktop's style is.
bool panelIsDark() {
    return qgetenv("XDG_CURRENT_DESKTOP").contains("GNOME") ||
           QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

LinuxPlatform::LinuxPlatform(std::unique_ptr<QApplication> application, std::unique_ptr<SingleInstance> instance,
                             LogSink& log, std::shared_ptr<const DesktopEntries> entries,
                             std::unique_ptr<X11ActionsPlatform> actions, const RecentEnds& history)
    : log_(log)
    , application_(std::move(application))
    , instance_(std::move(instance))
    , signals_([] { QCoreApplication::quit(); })
    , defaults_(preferencesFile(), log)
    , loginItem_(autostartFolder(), executable())
    , layout_(log,
              [this] {
                  mainQueue_.post([this] {
                      if (layoutChanged_)
                          layoutChanged_();
                  });
              })
    , layoutNotifier_(layout_.fileDescriptor(), QSocketNotifier::Read)
    , screens_(connection_)
    , panels_(connection_, log)
    , actions_(std::move(actions))
    , applications_(entries)
    , permission_(log, [&log] { openUserGuide(log); })
    , statusItem_(panelIsDark)
    , olderTray_(connection_, "_NET_SYSTEM_TRAY_S",
                 [this] {
                     if (olderTray_.owned())
                         statusItem_.olderTrayCame();
                 })
    , tap_(screens_, std::move(entries), log, [&log] { endWithTheDisplay(log); })
    , watchdog_(log, history, [this](Lifeline line) { tap_.connect(std::move(line)); })
    , program_(
          ProgramWatch::places(), log, [this] { replaced_(); }, ProgramWatch::Pace()) {
    QApplication::setQuitOnLastWindowClosed(false);
    if (auto feed = configuredFeed())
        updates_.emplace(*std::move(feed), defaults_, log,
                         [this](const QString& title, const QString& text, const QString& page, bool asked) {
                             notice_.show(title, text, page, asked);
                         });
    if (olderTray_.owned())
        statusItem_.olderTrayCame();
    QObject::connect(&layoutNotifier_, &QSocketNotifier::activated, &layoutNotifier_, [this] { layout_.refresh(); });
    worker_.emplace("actions", log);
    tap_.onArmed([this](pid_t thread) { mainQueue_.post([this, thread] { watchdog_.start(thread); }); });
    reportRestart(history, log, notice_);
}

int LinuxPlatform::run() {
    logOfAnEarlyExit = &log_;
    const int exitCode = QApplication::exec();
    logOfAnEarlyExit = nullptr;
    return exitCode;
}

void LinuxPlatform::stop() {
    tap_.stop();
    worker_.reset();
}

void LinuxPlatform::makeWay() {
    // Meanwhile it may have been removed, or replaced again; then the watch calls again.
    if (!program_.successorReady())
        return;
    log_.write("making way for the new program");
    tap_.stopAtRest([this] {
        mainQueue_.post([this] {
            hasSuccessor_ = true;
            QCoreApplication::quit();
        });
    });
}

std::function<int()> LinuxPlatform::successor() {
    if (!hasSuccessor_)
        return {};
    // In the same process, for whoever has started it and waits for its end.
    return [&log = log_, program = program_.program().string()]() mutable {
        log.flush();
        char* arguments[] = {program.data(), nullptr};
        execv(arguments[0], arguments);
        log.write("the new program cannot be started: " + std::system_category().message(errno));
        return EXIT_FAILURE;
    };
}

} // namespace

std::variant<std::unique_ptr<Platform>, int> makePlatform(int& argc, char** argv, LogSink& log) {
    // Before the threads, and only where the programs that the user opens are not our children.
    if (sessionStartsPrograms())
        giveUpNewPrivileges();
    const auto history = restartHistory(argc, argv);
    if (history.tooMany())
        return stayOff(argc, argv, history, log);
    const auto entries = DesktopEntries::load();
    auto actions = X11ActionsPlatform::open(entries, log, [&log] { endWithTheDisplay(log); });
    if (!actions) {
        constexpr auto reason = "there is no X display here; is DISPLAY set?";
        log.write(reason);
        std::fprintf(stderr, "Tarvik: %s\n", reason);
        return EXIT_FAILURE;
    }
    std::atexit(logEarlyExit);
    // The tap and the overlay speak X11; in a Wayland session the toolkit would choose another display.
    qputenv("QT_QPA_PLATFORM", "xcb");
    QCoreApplication::setApplicationName("Tarvik");
    QGuiApplication::setDesktopFileName("tarvik");
    auto application = std::make_unique<QApplication>(argc, argv);
    auto instance = std::make_unique<SingleInstance>(log);
    if (instance->claim() == SingleInstance::Role::second)
        return EXIT_SUCCESS;
    return std::make_unique<LinuxPlatform>(std::move(application), std::move(instance), log, entries,
                                           std::move(actions), history);
}

} // namespace tarvik
