// The whole program on the simulated Mac: what starts, what the user sees of it, and that nothing is left when it ends.
#include "app/composition.h"
#include "fakes/recording_log.h"
#include "macos/appkit/appkit_test.h"
#include "macos/appkit/toolkit.h"
#include "macos/sim/signals.h"
#include "macos/sim/world.h"

#include <algorithm>
#include <csignal>

namespace tarvik {
namespace {

using namespace recorder;

class ProgramTest : public AppKitTest {
protected:
    void SetUp() override {
        AppKitTest::SetUp();
        sim::reset();
        toolkit::preferencesShown = toolkit::preferencesMade = 0;
    }

    /// Lives through a life of the program; `script` is what happens in it.
    void run(std::function<void()> script) {
        toolkit::script = std::move(script);
        int argc = 0;
        {
            const auto platform = makePlatform(argc, nullptr, log);
            Composition program(*std::get<std::unique_ptr<Platform>>(platform), log);
            EXPECT_EQ(program.run(), 0);
        }
        EXPECT_EQ([NSApp delegate], nil);
        sim::advance(5); // what still lies in the queues finds nobody
        toolkit::script = {};
    }

    static NSStatusItem* item() { return desk().statusItems.at(0); }
    static std::string symbol() { return value<std::string>([[item() button] image], "symbol"); }
    static std::vector<std::string> titles() {
        std::vector<std::string> result;
        for (NSMenuItem* entry in openMenu(item()))
            result.push_back([entry isSeparatorItem] ? "-" : text8([entry title]));
        return result;
    }
    static void chooseTitle(const std::string& title) {
        for (NSMenuItem* entry in openMenu(item())) {
            if (text8([entry title]) == title)
                return choose(entry);
        }
        ADD_FAILURE() << "no item " << title;
    }
    static void stroke(double fromX, double toX, double y) {
        sim::hardware(sim::mouse(kCGEventRightMouseDown, {fromX, y}, 1));
        for (int i = 1; i <= 10; ++i)
            sim::hardware(sim::mouse(kCGEventRightMouseDragged, {fromX + (toX - fromX) * i / 10, y}, 1));
    }

    RecordingLog log;
};

const std::string grant = "⚠︎ Grant Accessibility Permission…";
const std::string noTap = "Tarvik: could not create event tap (Accessibility permission missing?)";

TEST_F(ProgramTest, WithThePermissionItWorksAtOnce) {
    run([&] {
        EXPECT_EQ(log.lines().front(), "launched; accessibility trusted=true");
        EXPECT_TRUE(log.contains("event tap started"));
        EXPECT_EQ(desk().policy, NSApplicationActivationPolicyAccessory);
        ASSERT_EQ(desk().activities.size(), 1u);
        EXPECT_TRUE(desk().activities[0].running);
        EXPECT_EQ(symbol(), "hand.draw");
        EXPECT_EQ(value<std::string>([[item() button] image], "accessibilityDescription"), "Tarvik");
        EXPECT_EQ(titles(), (std::vector<std::string>{"Tarvik — Mouse Gestures", "-", "Gestures Enabled", "-",
                                                      "Preferences…", "-", "Quit Tarvik"}));
        NSArray<NSMenuItem*>* items = openMenu(item());
        EXPECT_EQ(text8([[items objectAtIndex:2] keyEquivalent]), "e");
        EXPECT_EQ(text8([[items objectAtIndex:4] keyEquivalent]), ",");
        EXPECT_EQ(text8([[items objectAtIndex:6] keyEquivalent]), "q");
        EXPECT_EQ(toolkit::preferencesShown, 0);
        EXPECT_EQ(sim::world().prompts, 0);

        chooseTitle("Gestures Enabled");
        EXPECT_EQ(symbol(), "hand.raised.slash");
        EXPECT_TRUE([[item() button] appearsDisabled]);
        EXPECT_EQ([[openMenu(item()) objectAtIndex:2] state], 0);
        EXPECT_FALSE([desk().defaults.at("enabled").get() boolValue]);
        chooseTitle("Gestures Enabled");
        EXPECT_EQ(symbol(), "hand.draw");
        EXPECT_EQ([[openMenu(item()) objectAtIndex:2] state], 1);

        chooseTitle("Preferences…");
        [[NSApp delegate] applicationShouldHandleReopen:NSApp hasVisibleWindows:YES];
        EXPECT_EQ(toolkit::preferencesShown, 2);
        EXPECT_EQ(toolkit::preferencesMade, 1);
        chooseTitle("Quit Tarvik");
        EXPECT_EQ(desk().terminations, 1);
    });
    EXPECT_EQ(log.lines().back(), "ended");
}

TEST_F(ProgramTest, WithoutThePermissionItAsksWaitsAndStartsByItself) {
    sim::world().trusted = false;
    run([&] {
        EXPECT_EQ(log.lines().front(), "launched; accessibility trusted=false");
        EXPECT_EQ(sim::world().prompts, 1);
        EXPECT_EQ(toolkit::preferencesShown, 1);
        EXPECT_EQ(symbol(), "hand.raised.slash");
        EXPECT_EQ(titles().at(3), grant);
        sim::advance(3);
        EXPECT_TRUE(sim::world().taps.empty());

        chooseTitle(grant);
        chooseTitle(grant);
        EXPECT_EQ(sim::world().prompts, 3);
        EXPECT_EQ(desk().openedUrls,
                  std::vector<std::string>(
                      2, "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
        // Each look that finds the permission but gets no tap says so: one a second, not one for each request.
        sim::world().trusted = true;
        sim::world().refuseTaps = true;
        sim::advance(3.5);
        EXPECT_EQ(desk().systemLog, std::vector<std::string>(3, noTap));
        EXPECT_EQ(symbol(), "hand.raised.slash");
        sim::world().refuseTaps = false;
        sim::advance(1);
        EXPECT_EQ(symbol(), "hand.draw");
        EXPECT_FALSE([[item() button] appearsDisabled]);
        EXPECT_EQ(sim::world().taps.size(), 1u);
        EXPECT_EQ(titles().at(3), "-");
        sim::advance(10);
        EXPECT_EQ(desk().systemLog.size(), 3u);
        EXPECT_EQ(sim::world().taps.size(), 1u);

        sim::world().trusted = false;
        EXPECT_EQ(titles().at(3), grant) << "the menu looks again each time it opens";
    });
}

TEST_F(ProgramTest, AGestureIsDrawnAndCarriedOutUnlessTheApplicationInFrontIsExcluded) {
    desk().applications = {{10, "com.example.Paint", "Paint", NSApplicationActivationPolicyRegular}};
    desk().frontmost = 10;
    run([&] {
        stroke(500, 300, 400);
        sim::runMainQueue();
        auto* panel = only<NSPanel>();
        EXPECT_TRUE([panel isVisible]);
        EXPECT_EQ(pointsOf([only<CAShapeLayer>() path]).back(), CGPointMake(300, 900 - 400));
        EXPECT_FALSE([only<NSVisualEffectView>() isHidden]);
        EXPECT_EQ(text8([only<NSTextField>() stringValue]), "←   Previous Desktop (Space)");
        sim::hardware(sim::mouse(kCGEventRightMouseUp, {300, 400}, 1));
        sim::runMainQueue();
        EXPECT_FALSE([panel isVisible]);
        EXPECT_TRUE(log.contains("perform Previous Desktop (Space)"));
        EXPECT_EQ(sim::world().posted.size(), 4u);
        EXPECT_TRUE(sim::world().delivered.size() >= 4);

        desk().defaults["excludedApps"] = Strong(makeArray({makeString("com.example.Paint")}));
    });
    sim::world().delivered.clear();
    run([&] {
        stroke(500, 300, 400);
        sim::hardware(sim::mouse(kCGEventRightMouseUp, {300, 400}, 1));
        EXPECT_EQ(sim::world().delivered.size(), 12u);
    });
}

TEST_F(ProgramTest, ATapThatDiedInItsSleepIsMadeAnewOnWaking) {
    run([&] {
        for (NSNotificationName name :
             {NSWorkspaceDidWakeNotification, NSWorkspaceSessionDidBecomeActiveNotification}) {
            const auto before = sim::world().taps.size();
            sim::killPorts();
            post([[NSWorkspace sharedWorkspace] notificationCenter], name);
            EXPECT_EQ(sim::world().taps.size(), before + 1);
        }
        EXPECT_EQ(symbol(), "hand.draw");
    });
}

TEST_F(ProgramTest, ASignalEndsItAsTheMenuDoes) {
    run([&] {
        sim::raise(SIGTERM);
        EXPECT_EQ(desk().terminations, 0);
        sim::runMainQueue();
        EXPECT_EQ(desk().terminations, 1);
    });
    struct sigaction action = {};
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        sigaction(number, nullptr, &action);
        EXPECT_EQ(action.sa_handler, SIG_DFL);
    }
}

TEST_F(ProgramTest, WithAFeedTheMenuOffersUpdates) {
    desk().frameworks = {"/Applications/Tarvik.app/Contents/Frameworks/Sparkle.framework"};
    desk().info = {{"SUFeedURL", "https://updates.invalid/appcast.xml"}};
    run([&] {
        EXPECT_EQ(titles().at(5), "Check for Updates…");
        chooseTitle("Check for Updates…");
        EXPECT_EQ(desk().activations, 1);
    });
}

} // namespace
} // namespace tarvik
