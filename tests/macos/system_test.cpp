// The Dock, the permission, the main queue.
#include "macos/support/mac_actions.h"
#include "macos/support/mac_test.h"
#include "platform/macos/ax_permission.h"
#include "platform/macos/dispatch_main_queue.h"

namespace tarvik {
namespace {

using namespace sim;
using testing::ElementsAre;
using testing::IsEmpty;

class SystemTest : public MacTest {
protected:
    std::vector<std::int64_t> keysDown() {
        std::vector<std::int64_t> keys;
        for (const auto& [place, event] : world().posted) {
            if (event.type == kCGEventKeyDown)
                keys.push_back(event.integer(kCGKeyboardEventKeycode));
        }
        world().posted.clear();
        return keys;
    }

    RecordingLog log;
};

TEST_F(SystemTest, theDockIsToldByItsFunctionWhichIsLookedUpOnce) {
    MacActions mac(log);
    for (const auto kind :
         {ActionKind::missionControl, ActionKind::appExpose, ActionKind::showDesktop, ActionKind::launchpad})
        mac.performer.perform({kind, {}}, {});
    EXPECT_THAT(world().dockNotifications,
                ElementsAre("com.apple.expose.awake 0", "com.apple.expose.front.awake 0",
                            "com.apple.showdesktop.awake 0", "com.apple.launchpad.toggle 0"));
    EXPECT_THAT(world().opened, ElementsAre("/System/Library/Frameworks/ApplicationServices.framework/"
                                            "ApplicationServices 1",
                                            "CoreDockSendNotification"));
    EXPECT_THAT(log.lines(),
                ElementsAre("perform Mission Control", "dock notification com.apple.expose.awake",
                            "perform App Windows (Exposé)", "dock notification com.apple.expose.front.awake",
                            "perform Show Desktop", "dock notification com.apple.showdesktop.awake",
                            "perform Apps / Launchpad", "dock notification com.apple.launchpad.toggle"));
    EXPECT_THAT(world().posted, IsEmpty());
}

TEST_F(SystemTest, withoutTheFunctionKeysTakeItsPlaceButNotForLaunchpad) {
    MacActions mac(log, []() -> DockFunction { return nullptr; });
    mac.performer.perform({ActionKind::missionControl, {}}, {});
    EXPECT_THAT(keysDown(), ElementsAre(59, 126));
    mac.performer.perform({ActionKind::appExpose, {}}, {});
    EXPECT_THAT(keysDown(), ElementsAre(59, 125));
    mac.performer.perform({ActionKind::showDesktop, {}}, {});
    ASSERT_EQ(world().posted.size(), 2U);
    EXPECT_EQ(world().posted[0].event.flags, 0x800000U);
    EXPECT_THAT(keysDown(), ElementsAre(103));
    mac.performer.perform({ActionKind::launchpad, {}}, {});
    EXPECT_THAT(keysDown(), IsEmpty());
    EXPECT_THAT(log.lines(),
                ElementsAre("perform Mission Control", "CoreDockSendNotification unavailable; sending ⌃↑",
                            "perform App Windows (Exposé)", "CoreDockSendNotification unavailable; sending ⌃↓",
                            "perform Show Desktop", "CoreDockSendNotification unavailable; sending F11",
                            "perform Apps / Launchpad"));
}

TEST_F(SystemTest, theAppsBundleTakesThePlaceOfLaunchpad) {
    MacActions mac(log);
    mac.opener.files = {"/System/Applications/Apps.app"};
    mac.performer.perform({ActionKind::launchpad, {}}, {});
    EXPECT_THAT(mac.opener.opened, ElementsAre("file /System/Applications/Apps.app"));
    EXPECT_THAT(world().dockNotifications, IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre("perform Apps / Launchpad"));
}

TEST_F(SystemTest, asksForThePermissionWithThePromptAndShowsWhereItIsGiven) {
    FakeOpener opener;
    AxPermission permission(opener);
    EXPECT_TRUE(permission.trusted());
    world().trusted = false;
    EXPECT_FALSE(permission.trusted());
    EXPECT_EQ(world().prompts, 0);
    EXPECT_FALSE(permission.request());
    EXPECT_EQ(world().prompts, 1);
    permission.openSettings();
    EXPECT_THAT(opener.opened,
                ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
    world().trusted = true;
    EXPECT_TRUE(permission.request());
}

TEST_F(SystemTest, theMainQueueKeepsTheOrderAndTheDelay) {
    DispatchMainQueue queue;
    std::vector<int> order;
    queue.after(std::chrono::milliseconds(500), [&] { order.push_back(3); });
    queue.post([&] { order.push_back(1); });
    queue.post([&] { order.push_back(2); });
    EXPECT_THAT(order, IsEmpty());
    advance(0.4);
    EXPECT_THAT(order, ElementsAre(1, 2));
    advance(0.2);
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

} // namespace
} // namespace tarvik
