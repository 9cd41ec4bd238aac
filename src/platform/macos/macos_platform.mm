// A Mac: which adapter stands behind which port. Everything is on the main thread.
#include "ports/platform.h"

#import "platform/macos/appkit_appearance.h"
#import "platform/macos/appkit_application.h"
#import "platform/macos/appkit_applications.h"
#import "platform/macos/appkit_key_monitor.h"
#import "platform/macos/appkit_screens.h"
#import "platform/macos/appkit_status_item.h"
#import "platform/macos/appkit_trail_panels.h"
#import "platform/macos/appkit_workspace.h"
#import "platform/macos/main_app_login_item.h"
#import "platform/macos/process_activity.h"
#import "platform/macos/sparkle_update_channel.h"
#import "platform/macos/system_log.h"
#import "platform/macos/user_defaults_store.h"

#include "platform/macos/ax_permission.h"
#include "platform/macos/ax_windows.h"
#include "platform/macos/dispatch_main_queue.h"
#include "platform/macos/dock_shell.h"
#include "platform/macos/quartz_event_tap.h"
#include "platform/macos/quartz_key_poster.h"
#include "platform/macos/termination_signals.h"
#include "platform/macos/tis_keyboard_layout.h"
#include "platform/macos/toolkit_loop.h"

#include <utility>

namespace tarvik {
namespace {

/// Takes what is autoreleased while no event is handled: before the main loop runs and after it.
class AutoreleasePool {
public:
    AutoreleasePool() : pool_([[NSAutoreleasePool alloc] init]) {}
    ~AutoreleasePool() { [pool_ drain]; }
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;

private:
    NSAutoreleasePool* const pool_;
};

NSNotificationCenter* workspaceNotifications() { return [[NSWorkspace sharedWorkspace] notificationCenter]; }

/// What stands further down uses what stands above it.
class MacosPlatform final : public Platform {
public:
    MacosPlatform(int& argc, char** argv, LogSink& log);

    const Vocabulary& vocabulary() const override { return macosVocabulary(); }
    const Wording& wording() const override { return macosWording(); }
    LogSink& systemLog() override { return systemLog_; }
    DefaultsStore& defaults() override { return defaults_; }
    LoginItem& loginItem() override { return loginItem_; }
    MainQueue& mainQueue() override { return mainQueue_; }
    TaskQueue& actionQueue() override { return actionQueue_; }

    EventTap& tap() override { return tap_; }
    const Frontmost& frontmost() const override { return workspace_; }
    Screens& screens() override { return screens_; }
    TrailPanels& trailPanels() override { return panels_; }

    KeyPoster& keys() override { return keys_; }
    KeyboardLayout& layout() override { return layout_; }
    void onLayoutChange(std::function<void()> handler) override { layoutChanged_ = std::move(handler); }
    DesktopShell& shell() override { return shell_; }
    Windows& windows() override { return windows_; }
    Workspace& workspace() override { return workspace_; }

    Applications& applications() override { return applications_; }
    KeyMonitor& keyMonitor() override { return keyMonitor_; }
    Appearance& appearance() override { return appearance_; }

    StatusItem& statusItem() override { return statusItem_; }
    Permission& permission() override { return permission_; }
    Activity& activity() override { return activity_; }
    Activation& activation() override { return application_; }
    UpdateChannel* updateChannel() override { return updates_.get(); }

    void onReopen(std::function<void()> handler) override { application_.onReopen(std::move(handler)); }
    void terminate() override { application_.terminate(); }
    int run() override { return loop_.run(); }
    void stop() override { tap_.stop(); }

private:
    const AutoreleasePool pool_;
    AppKitApplication application_;
    ToolkitLoop loop_;
    TerminationSignals signals_;
    SystemLog systemLog_;
    UserDefaultsStore defaults_;
    MainAppLoginItem loginItem_;
    DispatchMainQueue mainQueue_;
    InlineQueue actionQueue_;
    AppKitScreens screens_;
    AppKitTrailPanels panels_;
    AppKitWorkspace workspace_;
    QuartzKeyPoster keys_;
    std::function<void()> layoutChanged_;
    TisKeyboardLayout layout_;
    DockShell shell_;
    AxWindows windows_;
    AppKitApplications applications_;
    AppKitKeyMonitor keyMonitor_;
    AppKitAppearance appearance_;
    AppKitStatusItem statusItem_;
    AxPermission permission_;
    ProcessActivity activity_;
    std::unique_ptr<SparkleUpdateChannel> updates_;
    QuartzEventTap tap_;
    // Taps may die, or be switched off, while the machine sleeps or another user's session is in front.
    Observation woken_;
    Observation sessionBack_;
};

MacosPlatform::MacosPlatform(int& argc, char** argv, LogSink& log)
    : loop_(argc, argv)
    , signals_([this] { application_.terminate(); })
    , defaults_(log)
    , layout_([this] {
        if (layoutChanged_)
            layoutChanged_();
    })
    , shell_(workspace_, log)
    , windows_(workspace_)
    , permission_(workspace_)
    , updates_(SparkleUpdateChannel::make(log))
    , tap_(mainQueue_, log)
    , woken_(workspaceNotifications(), NSWorkspaceDidWakeNotification, [this] { tap_.check(); })
    , sessionBack_(workspaceNotifications(), NSWorkspaceSessionDidBecomeActiveNotification, [this] { tap_.check(); }) {
    application_.becomeAgent();
}

} // namespace

std::variant<std::unique_ptr<Platform>, int> makePlatform(int& argc, char** argv, LogSink& log) {
    return std::make_unique<MacosPlatform>(argc, argv, log);
}

} // namespace tarvik
