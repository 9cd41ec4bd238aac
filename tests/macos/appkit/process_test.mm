// What concerns the process: its activity, its place among the applications, login, logs, looks, typed keys.
#import "platform/macos/appkit_appearance.h"
#import "platform/macos/appkit_application.h"
#import "platform/macos/appkit_key_monitor.h"
#import "platform/macos/main_app_login_item.h"
#import "platform/macos/process_activity.h"
#import "platform/macos/scroll_direction.h"
#import "platform/macos/system_log.h"

#include "fakes/fake_defaults_store.h"
#include "fakes/recording_log.h"
#include "macos/appkit/appkit_test.h"
#include "macos/sim/events.h"
#include "ports/platform.h"
#include "settings/settings.h"

namespace tarvik {
namespace {

using namespace recorder;

class ProcessTest : public AppKitTest {};

TEST_F(ProcessTest, ActivityIsLatencyCriticalAndLastsAsLongAsItsOwner) {
    {
        ProcessActivity activity;
        {
            NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
            activity.beginLatencyCritical("Mouse gesture event tap");
            [pool drain];
        }
        ASSERT_EQ(desk().activities.size(), 1u);
        EXPECT_EQ(desk().activities[0].options, 0x00EFFFFFULL | 0xFF00000000ULL);
        EXPECT_EQ(desk().activities[0].reason, "Mouse gesture event tap");
        EXPECT_TRUE(desk().activities[0].running);
    }
    EXPECT_FALSE(desk().activities[0].running);
}

TEST_F(ProcessTest, ApplicationIsAnAgentThatHearsOfBeingOpenedAgain) {
    id delegate = nil;
    {
        AppKitApplication application;
        EXPECT_EQ(desk().policy, NSApplicationActivationPolicyAccessory);
        delegate = [[[NSApp delegate] retain] autorelease];
        ASSERT_NE(delegate, nil);
        const auto open = [&] { return [delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]; };
        EXPECT_TRUE(open()) << "with nobody to be told";
        int opened = 0;
        application.onReopen([&] { ++opened; });
        EXPECT_TRUE(open());
        EXPECT_EQ(opened, 1);
        EXPECT_EQ(desk().activations, 0);
        application.activate();
        EXPECT_EQ(desk().activations, 1);
        application.terminate();
        EXPECT_EQ(desk().terminations, 1);
    }
    EXPECT_EQ([NSApp delegate], nil);
    EXPECT_TRUE([delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]) << "passed on by the toolkit";

    NSObject* other = [[[NSObject alloc] init] autorelease];
    {
        const AppKitApplication application;
        [NSApp setDelegate:(id<NSApplicationDelegate>)other];
    }
    EXPECT_EQ((id)[NSApp delegate], (id)other) << "the toolkit's stays";
    [NSApp setDelegate:nil];
}

TEST_F(ProcessTest, LoginItemIsOnOnlyWhenItIsAllowed) {
    MainAppLoginItem item;
    for (const auto status :
         {SMAppServiceStatusNotRegistered, SMAppServiceStatusRequiresApproval, SMAppServiceStatusNotFound}) {
        desk().loginItems.status = status;
        EXPECT_FALSE(item.enabled());
    }
    EXPECT_EQ(item.setEnabled(true), std::nullopt);
    EXPECT_TRUE(item.enabled());
    EXPECT_EQ(item.setEnabled(false), std::nullopt);
    EXPECT_FALSE(item.enabled());
}

TEST_F(ProcessTest, ALoginItemThatCannotBeChangedLeavesOneLineInTheSystemsLog) {
    MainAppLoginItem item;
    SystemLog systemLog;
    FakeDefaultsStore store;
    Settings settings(store, item, systemLog);
    int told = 0;
    const auto subscription = settings.observe([&](Setting setting) { told += setting == Setting::launchAtLogin; });
    desk().loginItems.refusal = "Error Domain=SMAppServiceErrorDomain Code=1 \"100 %@\"";
    settings.setLaunchAtLogin(true);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(told, 1);
    EXPECT_EQ(desk().systemLog, std::vector<std::string>{"Tarvik: launch-at-login change failed: Error "
                                                         "Domain=SMAppServiceErrorDomain Code=1 \"100 %@\""});
}

TEST_F(ProcessTest, LogIsWhereTheUsersLogsAre) { EXPECT_EQ(logFile(), "/Users/tester/Library/Logs/Tarvik.log"); }

TEST_F(ProcessTest, TypedKeysGoToTheMonitorAloneUntilItStops) {
    AppKitKeyMonitor monitor;
    EXPECT_TRUE(typeKey(17, 0));
    std::vector<TypedKey> typed;
    monitor.start([&](TypedKey) { FAIL() << "replaced"; });
    monitor.start([&](TypedKey key) { typed.push_back(key); });
    EXPECT_EQ(keyMonitors(), 1u);
    EXPECT_FALSE(typeKey(17, NSEventModifierFlagCapsLock | NSEventModifierFlagCommand));
    ASSERT_EQ(typed.size(), 1u);
    EXPECT_EQ(typed[0].keyCode, 17);
    EXPECT_EQ(typed[0].modifiers, 0x110000u);
    monitor.stop();
    monitor.stop();
    EXPECT_TRUE(typeKey(17, 0));

    const auto held = std::make_shared<int>(0);
    monitor.start([&monitor, held](TypedKey) {
        monitor.stop();
        ++*held;
    });
    EXPECT_FALSE(typeKey(53, 0));
    EXPECT_TRUE(typeKey(53, 0));
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
    monitor.start([](TypedKey) {});
}

TEST_F(ProcessTest, LookFollowsTheDesktop) {
    AppKitAppearance appearance;
    EXPECT_EQ(appearance.look(), (Look{false, 0x0080FF, false}));
    int told = 0;
    appearance.onChange([&] { ++told; });
    desk().dark = true;
    changed(NSApp, "effectiveAppearance");
    desk().accent[0] = 1.2;
    post([NSNotificationCenter defaultCenter], NSSystemColorsDidChangeNotification);
    desk().reducesMotion = true;
    post([[NSWorkspace sharedWorkspace] notificationCenter],
         NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification);
    EXPECT_EQ(told, 3);
    EXPECT_EQ(appearance.look(), (Look{true, 0xFF80FF, true}));
    desk().accentHasComponents = false;
    EXPECT_EQ(appearance.look().accent, Look().accent);
}

TEST_F(ProcessTest, WheelsDirectionIsAskedForWithoutLeavingAnythingBehind) {
    for (const bool inverted : {true, false}) {
        auto data = sim::wheel(1, 10, 1);
        data.directionInverted = inverted;
        const auto event = sim::create<sim::Event, CGEventRef>(data);
        const auto before = liveObjects();
        EXPECT_EQ(isDirectionInvertedFromDevice(event), inverted);
        EXPECT_EQ(liveObjects(), before);
        CFRelease(event);
    }
}

} // namespace
} // namespace tarvik
