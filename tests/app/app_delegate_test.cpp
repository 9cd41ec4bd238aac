#include "app/app_delegate.h"

#include "fakes/fake_agent_ports.h"
#include "fakes/fake_defaults_store.h"
#include "fakes/fake_login_item.h"
#include "fakes/recording_log.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto grant = "⚠︎ Grant Accessibility Permission…";
constexpr auto noTap = "Tarvik: could not create event tap (Accessibility permission missing?)";

class FakeWindow final : public PreferencesWindow {
public:
    FakeWindow(int& shown, std::function<void()>& waiting) : shown_(shown), waiting_(waiting) {}
    void show() override { ++shown_; }
    void whenClosed(std::function<void()> task) override { waiting_ = std::move(task); }

private:
    int& shown_;
    std::function<void()>& waiting_;
};

class AppDelegateTest : public testing::Test {
protected:
    void launch() { delegate.applicationDidFinishLaunching(); }
    bool active() const {
        EXPECT_EQ(statusItem.description, "Tarvik");
        EXPECT_EQ(statusItem.appearsDisabled, statusItem.icon == StatusIcon::handRaisedSlash);
        return statusItem.icon == StatusIcon::handDraw;
    }
    std::vector<std::string> titles() {
        std::vector<std::string> all;
        for (const auto& item : statusItem.build())
            all.push_back(item.title);
        return all;
    }
    bool offersGrant() { return testing::Value(titles(), testing::Contains(grant)); }

    FakeDefaultsStore store;
    FakeLoginItem loginItem;
    FakePermission permission;
    FakeUpdateChannel channel;
    FakeActivation activation;
    FakeStatusItem statusItem;
    FakeMainQueue queue;
    FakeActivity activity;
    RecordingLog log;
    RecordingLog systemLog;
    /// Whether the system lets a tap be made, and what came of it.
    bool tapAllowed = true;
    bool tapInstalled = false;
    int starts = 0;
    int windowsMade = 0;
    int shown = 0;
    bool terminated = false;
    bool madeWay = false;
    std::function<void()> whenClosed;

    Settings settings{store, loginItem, systemLog};
    Permissions permissions{permission};
    Updater updater{&channel, activation};
    AppDelegate delegate{{settings, permissions, updater, statusItem, queue, activity, macosWording(), log, systemLog},
                         {[this] {
                              ++starts;
                              return tapInstalled = tapAllowed;
                          },
                          [this] { return tapInstalled; },
                          [this]() -> std::unique_ptr<PreferencesWindow> {
                              ++windowsMade;
                              return std::make_unique<FakeWindow>(shown, whenClosed);
                          },
                          [this] { terminated = true; }, [this] { madeWay = true; }}};
};

TEST_F(AppDelegateTest, launchedWithThePermissionItStartsAtOnce) {
    launch();
    EXPECT_THAT(activity.reasons, ElementsAre("Mouse gesture event tap"));
    EXPECT_THAT(log.lines(), ElementsAre("launched; accessibility trusted=true"));
    EXPECT_EQ(starts, 1);
    EXPECT_TRUE(active());
    EXPECT_EQ(permission.requests, 0);
    EXPECT_EQ(windowsMade, 0) << "the window is made when it is first wanted";
    queue.pass(seconds(10));
    EXPECT_EQ(starts, 1);
    EXPECT_THAT(systemLog.lines(), IsEmpty());
}

TEST_F(AppDelegateTest, launchedWithoutThePermissionItAsksAndWaits) {
    permission.granted = false;
    permissions.refresh();
    launch();
    EXPECT_THAT(log.lines(), ElementsAre("launched; accessibility trusted=false"));
    EXPECT_EQ(permission.requests, 1);
    EXPECT_EQ(permission.settingsOpened, 0);
    EXPECT_EQ(shown, 1);
    EXPECT_FALSE(active());
    EXPECT_TRUE(offersGrant());
    queue.pass(seconds(100));
    EXPECT_EQ(starts, 0);

    permission.granted = true;
    queue.pass(milliseconds(999));
    EXPECT_EQ(starts, 0);
    queue.pass(milliseconds(1));
    EXPECT_EQ(starts, 1);
    EXPECT_TRUE(permissions.trusted());
    EXPECT_TRUE(active());
    EXPECT_FALSE(offersGrant());
    queue.pass(seconds(10));
    EXPECT_EQ(starts, 1) << "the wait is over";
}

TEST_F(AppDelegateTest, aRefusedTapIsTriedAgainEverySecond) {
    tapAllowed = false;
    launch();
    EXPECT_FALSE(active());
    EXPECT_THAT(systemLog.lines(), ElementsAre(noTap));
    queue.pass(seconds(3));
    EXPECT_EQ(starts, 4);
    EXPECT_THAT(systemLog.lines(), ElementsAre(noTap, noTap, noTap, noTap));
    tapAllowed = true;
    queue.pass(seconds(10));
    EXPECT_EQ(starts, 5);
    EXPECT_TRUE(active());
    EXPECT_EQ(shown, 0);
}

TEST_F(AppDelegateTest, askingTwiceLeavesOneWait) {
    permission.granted = false;
    permissions.refresh();
    launch();
    queue.pass(milliseconds(600));
    statusItem.choose(grant);
    statusItem.choose(grant);
    EXPECT_EQ(permission.requests, 3);
    EXPECT_EQ(permission.settingsOpened, 2);
    permission.granted = true;
    tapAllowed = false;
    queue.pass(milliseconds(999));
    EXPECT_EQ(starts, 0) << "the earlier wait would have ended by now";
    queue.pass(seconds(2));
    EXPECT_EQ(starts, 2);
}

TEST_F(AppDelegateTest, aPermissionThatIsTakenBackShowsInTheMenu) {
    launch();
    EXPECT_FALSE(offersGrant());
    permission.granted = false;
    queue.pass(seconds(10));
    EXPECT_TRUE(permissions.trusted()) << "nobody watches for it";
    EXPECT_TRUE(offersGrant());
    EXPECT_FALSE(permissions.trusted());
}

TEST_F(AppDelegateTest, theSwitchChangesSettingAndIconAtOnce) {
    launch();
    statusItem.choose("Gestures Enabled");
    EXPECT_FALSE(settings.enabled());
    EXPECT_FALSE(active());
    statusItem.choose("Gestures Enabled");
    EXPECT_TRUE(settings.enabled());
    EXPECT_TRUE(active());
    settings.setEnabled(false);
    EXPECT_FALSE(active()) << "wherever it was changed";
}

TEST_F(AppDelegateTest, thePreferencesAreMadeOnce) {
    launch();
    statusItem.choose("Preferences…");
    delegate.applicationShouldHandleReopen();
    EXPECT_EQ(windowsMade, 1);
    EXPECT_EQ(shown, 2);
}

TEST_F(AppDelegateTest, updatesAndTheEnd) {
    launch();
    statusItem.choose("Check for Updates…");
    EXPECT_EQ(activation.activated, 1);
    EXPECT_EQ(channel.checks, 1);
    EXPECT_FALSE(terminated);
    statusItem.choose("Quit Tarvik");
    EXPECT_TRUE(terminated);
}

TEST_F(AppDelegateTest, aReplacedProgramMakesWayUnlessThePreferencesAreOpen) {
    launch();
    delegate.programWasReplaced();
    EXPECT_TRUE(madeWay);

    madeWay = false;
    delegate.openPreferences();
    delegate.programWasReplaced();
    EXPECT_FALSE(madeWay);
    ASSERT_TRUE(whenClosed);
    whenClosed();
    EXPECT_TRUE(madeWay);
}

} // namespace
} // namespace tarvik
