// The tap with the engine: what is given back, and how both come through everything that the system does to them.
#include "engine/gesture_engine.h"
#include "fakes/fake_engine_ports.h"
#include "fakes/recording_log.h"
#include "macos/support/mac_test.h"
#include "platform/macos/dispatch_main_queue.h"
#include "platform/macos/quartz_event_tap.h"

namespace tarvik {
namespace {

using namespace sim;
using testing::ElementsAre;
using testing::IsEmpty;

class TapSafetyTest : public MacTest {
protected:
    void SetUp() override {
        MacTest::SetUp();
        ASSERT_TRUE(engine.start());
        log.clear();
    }
    void TearDown() override {
        tap.stop();
        MacTest::TearDown();
    }

    /// A click that the engine takes and gives back, which it only can while the tap works.
    bool works() {
        world().posted.clear();
        hardware(mouse(kCGEventRightMouseDown, {5, 5}, 1));
        hardware(mouse(kCGEventRightMouseUp, {5, 5}, 1));
        return world().posted.size() == 2;
    }
    std::vector<std::string> logged() {
        auto lines = log.lines();
        log.clear();
        return lines;
    }
    void drawAStroke() {
        hardware(mouse(kCGEventRightMouseDown, {100, 100}, 1));
        hardware(mouse(kCGEventRightMouseDragged, {200, 100}, 1));
        ASSERT_TRUE(trail.shown);
    }

    DispatchMainQueue queue;
    RecordingLog log;
    QuartzEventTap tap{queue, log};
    FakeTrail trail;
    FakeActions actions;
    FakeFrontmost frontmost;
    GestureEngine engine{tap, trail, actions, frontmost, log};
};

TEST_F(TapSafetyTest, theSecondClickOfTwoIsGivenBackAsSuchWhereItsButtonWasReleased) {
    hardware(mouse(kCGEventRightMouseDown, {10, 20}, 1, 2));
    EXPECT_THAT(world().delivered, IsEmpty());
    hardware(mouse(kCGEventRightMouseUp, {14, 21}, 1, 2));
    ASSERT_EQ(world().delivered.size(), 2U);
    EXPECT_EQ(world().delivered[0].type, kCGEventRightMouseDown);
    EXPECT_EQ(world().delivered[1].type, kCGEventRightMouseUp);
    for (const auto& event : world().delivered) {
        EXPECT_EQ(event.location.x, 14);
        EXPECT_EQ(event.location.y, 21);
        EXPECT_EQ(event.integer(kCGMouseEventClickState), 2);
        EXPECT_EQ(event.integer(kCGEventSourceUserData), selfEventMarker);
    }
    EXPECT_THAT(logged(), ElementsAre("gesture '' scrolled=false -> unmapped"));
}

TEST_F(TapSafetyTest, bothNoticesSwitchItOnAgainAndAHoldGoesOn) {
    drawAStroke();
    disableTaps(kCGEventTapDisabledByTimeout);
    EXPECT_THAT(logged(), ElementsAre("event tap disabled by system (4294967294); re-enabling"));
    disableTaps(kCGEventTapDisabledByUserInput);
    EXPECT_THAT(logged(), ElementsAre("event tap disabled by system (4294967295); re-enabling"));
    EXPECT_TRUE(trail.shown);
    hardware(mouse(kCGEventRightMouseUp, {200, 100}, 1));
    EXPECT_THAT(world().delivered, IsEmpty());
    EXPECT_TRUE(works());
}

TEST_F(TapSafetyTest, withoutThePermissionItIsOffUntilThePermissionIsBack) {
    drawAStroke();
    world().trusted = false;
    advance(1);
    EXPECT_THAT(logged(),
                ElementsAre("event tap disabled: the Accessibility permission is gone", "gesture 'R' cancelled"));
    EXPECT_FALSE(trail.shown);
    hardware(mouse(kCGEventRightMouseUp, {200, 100}, 1));
    EXPECT_EQ(world().delivered.size(), 1U) << "input goes to the applications";
    EXPECT_TRUE(tap.installed());
    advance(10);
    EXPECT_THAT(logged(), IsEmpty()) << "said once, and our own switching off is no reason to switch on";
    EXPECT_FALSE(works());

    world().trusted = true;
    advance(1);
    EXPECT_THAT(logged(), ElementsAre("event tap enabled again: the Accessibility permission is back"));
    EXPECT_TRUE(works());
}

TEST_F(TapSafetyTest, aNoticeWithoutThePermissionLeavesItOff) {
    world().trusted = false;
    disableTaps(kCGEventTapDisabledByTimeout);
    EXPECT_THAT(logged(), ElementsAre("event tap disabled by system (4294967294); re-enabling",
                                      "event tap disabled: the Accessibility permission is gone"));
    disableTaps(kCGEventTapDisabledByUserInput);
    runMainQueue();
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_FALSE(works());
    world().trusted = true;
    tap.check();
    EXPECT_TRUE(works());
}

TEST_F(TapSafetyTest, oneThatWasSwitchedOffSilentlyIsSwitchedOn) {
    drawAStroke();
    disableTapsSilently();
    advance(1);
    EXPECT_THAT(logged(),
                ElementsAre("event tap was switched off without a notice; enabled again", "gesture 'R' cancelled"));
    EXPECT_EQ(world().taps.size(), 1U);
    EXPECT_TRUE(works());
}

TEST_F(TapSafetyTest, aDeadOneIsMadeAnewAtTheWakeUp) {
    killPorts();
    EXPECT_FALSE(works());
    tap.check();
    EXPECT_THAT(logged(), ElementsAre("event tap had died; made anew"));
    EXPECT_EQ(world().taps.size(), 2U);
    EXPECT_TRUE(works());
}

TEST_F(TapSafetyTest, aDeadOneThatIsRefusedIsTriedEverySecond) {
    drawAStroke();
    killPorts();
    world().refuseTaps = true;
    advance(3);
    EXPECT_THAT(logged(), ElementsAre("event tap has died and cannot be made anew; trying again every second",
                                      "gesture 'R' cancelled"));
    EXPECT_TRUE(tap.installed());
    tap.enable();
    world().refuseTaps = false;
    advance(1);
    EXPECT_THAT(logged(), ElementsAre("event tap had died; made anew"));
    EXPECT_TRUE(works());
}

TEST_F(TapSafetyTest, aDeadOneWithoutThePermissionWaitsForIt) {
    killPorts();
    world().trusted = false;
    advance(2);
    EXPECT_EQ(world().taps.size(), 1U);
    world().trusted = true;
    advance(1);
    EXPECT_EQ(world().taps.size(), 2U);
    EXPECT_TRUE(works());
}

TEST_F(TapSafetyTest, looksOnceASecond) {
    disableTapsSilently();
    advance(0.9);
    EXPECT_THAT(logged(), IsEmpty());
    advance(0.1);
    EXPECT_EQ(logged().size(), 1U);
}

} // namespace
} // namespace tarvik
