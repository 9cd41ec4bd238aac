// The tap: how it is made, what it makes of the engine's decisions, what it gives back.
#include "fakes/recording_log.h"
#include "macos/support/mac_test.h"
#include "platform/macos/dispatch_main_queue.h"
#include "platform/macos/quartz_event_tap.h"

#include <stdexcept>

namespace tarvik {
namespace {

using namespace sim;
using testing::ElementsAre;

class EventTapTest : public MacTest {
protected:
    bool start() {
        return tap.start([this](PointerEvent event) -> std::optional<PointerEvent> {
            seen.push_back(event);
            return decide(std::move(event));
        });
    }
    void TearDown() override {
        seen.clear();
        tap.stop();
        MacTest::TearDown();
    }

    DispatchMainQueue queue;
    RecordingLog log;
    QuartzEventTap tap{queue, log,
                       [] { return std::chrono::nanoseconds(static_cast<std::int64_t>(world().now * 1e9)); }};
    std::vector<PointerEvent> seen;
    std::function<std::optional<PointerEvent>(PointerEvent)> decide = [](PointerEvent event) { return event; };
};

TEST_F(EventTapTest, isAnActiveFilterAtTheHeadOfTheSessionForSevenTypes) {
    EXPECT_FALSE(tap.installed());
    ASSERT_TRUE(start());
    EXPECT_TRUE(tap.installed());
    ASSERT_EQ(world().taps.size(), 1U);
    const auto& made = world().taps[0];
    EXPECT_EQ(made.place, 1U);
    EXPECT_EQ(made.placement, 0U);
    EXPECT_EQ(made.options, 0U);
    EXPECT_EQ(made.mask, 0xE400098U);

    for (const auto type : {3, 7, 4, 25, 27, 26})
        hardware(mouse(static_cast<CGEventType>(type), {1, 2}, type < 20 ? 1 : 2));
    hardware(wheel(1, 10, 1));
    hardware(mouse(kCGEventLeftMouseDown, {1, 2}, 0));
    EXPECT_EQ(seen.size(), 7U) << "the left button is nobody's business";
    EXPECT_EQ(world().delivered.size(), 8U);
}

TEST_F(EventTapTest, aRefusalIsOverWithTheNextCall) {
    world().refuseTaps = true;
    EXPECT_FALSE(start());
    EXPECT_FALSE(tap.installed());
    advance(5);
    EXPECT_TRUE(log.lines().empty()) << "nothing is looked after that is not there";
    world().refuseTaps = false;
    EXPECT_TRUE(start());
}

TEST_F(EventTapTest, translatesEveryField) {
    ASSERT_TRUE(start());
    world().now = 2000;
    hardware(mouse(kCGEventOtherMouseDragged, {-1200.5, 33.25}, 4));
    auto turn = wheel(3, 30, 3.5);
    turn.integers[kCGScrollWheelEventDeltaAxis2] = -1;
    turn.integers[kCGScrollWheelEventPointDeltaAxis2] = -11;
    turn.doubles[kCGScrollWheelEventFixedPtDeltaAxis2] = -1.5;
    turn.integers[kCGScrollWheelEventScrollPhase] = 4;
    turn.integers[kCGScrollWheelEventMomentumPhase] = 2;
    turn.integers[kCGEventSourceUserData] = 77;
    turn.directionInverted = true;
    hardware(turn);

    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].type, PointerEventType::otherDragged);
    EXPECT_EQ(seen[0].button, 4);
    EXPECT_EQ(seen[0].location, (Point{-1200.5, 33.25}));
    EXPECT_EQ(seen[0].unitsPerPoint, 1);
    EXPECT_EQ(seen[0].time, std::chrono::seconds(2000));
    EXPECT_EQ(seen[0].marker, 0);
    EXPECT_EQ(seen[1].type, PointerEventType::scrollWheel);
    EXPECT_EQ(seen[1].vertical, (ScrollDelta{3, 30, 3.5}));
    EXPECT_EQ(seen[1].horizontal, (ScrollDelta{-1, -11, -1.5}));
    EXPECT_EQ(seen[1].scrollPhase, 4);
    EXPECT_EQ(seen[1].momentumPhase, 2);
    EXPECT_EQ(seen[1].marker, 77);
    EXPECT_TRUE(seen[1].directionInverted);
}

TEST_F(EventTapTest, whatIsNotChangedIsNotWritten) {
    ASSERT_TRUE(start());
    hardware(wheel(3, 30, 3.5));
    hardware(mouse(kCGEventRightMouseDown, {5, 6}, 1, 2));
    ASSERT_EQ(world().delivered.size(), 2U);
    for (const auto& event : world().delivered)
        EXPECT_TRUE(event.written.empty());
    decide = [](PointerEvent) { return std::nullopt; };
    hardware(wheel(3, 30, 3.5));
    EXPECT_EQ(world().delivered.size(), 2U) << "swallowed";
}

TEST_F(EventTapTest, writesAChangedAxisInTheOrderLinePointFixed) {
    ASSERT_TRUE(start());
    decide = [](PointerEvent event) {
        event.vertical = {-3, -30, -3.5};
        return event;
    };
    hardware(wheel(3, 30, 3.5));
    decide = [](PointerEvent event) {
        event.horizontal = {2, 20, 2.25};
        return event;
    };
    hardware(wheel(-2, -20, -2.25, true));
    ASSERT_EQ(world().delivered.size(), 2U);
    const auto& vertical = world().delivered[0];
    EXPECT_THAT(vertical.written, ElementsAre(11, 96, 93));
    EXPECT_EQ(vertical.integer(kCGScrollWheelEventDeltaAxis1), -3);
    EXPECT_EQ(vertical.integer(kCGScrollWheelEventPointDeltaAxis1), -30);
    EXPECT_EQ(vertical.floating(kCGScrollWheelEventFixedPtDeltaAxis1), -3.5);
    const auto& horizontal = world().delivered[1];
    EXPECT_THAT(horizontal.written, ElementsAre(12, 97, 94));
    EXPECT_EQ(horizontal.integer(kCGScrollWheelEventDeltaAxis2), 2);
    EXPECT_EQ(horizontal.integer(kCGScrollWheelEventPointDeltaAxis2), 20);
    EXPECT_EQ(horizontal.floating(kCGScrollWheelEventFixedPtDeltaAxis2), 2.25);
}

TEST_F(EventTapTest, postsACopyWithPlaceAndMarkerAtTheLevelOfTheHardware) {
    ASSERT_TRUE(start());
    decide = [](PointerEvent event) { return event.marker ? std::optional(event) : std::nullopt; };
    auto press = mouse(kCGEventOtherMouseDown, {10, 20}, 2, 3);
    press.flags = kCGEventFlagMaskShift;
    hardware(press);
    ASSERT_EQ(seen.size(), 1U);
    auto given = seen[0];
    given.location = {14, 21};
    given.marker = selfEventMarker;
    tap.post(given);
    tap.post(given);

    ASSERT_EQ(world().posted.size(), 2U);
    EXPECT_EQ(world().posted[0].place, 0U);
    ASSERT_EQ(world().delivered.size(), 2U) << "it came back through the tap";
    for (const auto& event : world().delivered) {
        EXPECT_EQ(event.type, kCGEventOtherMouseDown);
        EXPECT_EQ(event.location.x, 14);
        EXPECT_EQ(event.location.y, 21);
        EXPECT_EQ(event.integer(kCGEventSourceUserData), 0x54415256494B4556);
        EXPECT_EQ(event.integer(kCGMouseEventClickState), 3);
        EXPECT_EQ(event.integer(kCGMouseEventButtonNumber), 2);
        EXPECT_EQ(event.floating(kCGMouseEventPressure), 0.5);
        EXPECT_EQ(event.flags, kCGEventFlagMaskShift);
    }
    EXPECT_EQ(seen[0].location, (Point{10, 20})) << "the kept event is not touched";
}

TEST_F(EventTapTest, whatCannotBeCopiedIsNotPosted) {
    ASSERT_TRUE(start());
    world().refuseCopies = true;
    hardware(mouse(kCGEventRightMouseDown, {1, 1}, 1));
    hardware(mouse(kCGEventRightMouseUp, {1, 1}, 1));
    world().refuseCopies = false;
    tap.post(seen.at(0));
    hardware(mouse(kCGEventRightMouseDown, {1, 1}, 1));
    world().refuseCopies = true;
    tap.post(seen.at(2));
    EXPECT_TRUE(world().posted.empty());
}

TEST_F(EventTapTest, callbackWithoutATapPassesAndOnAnotherThreadEndsTheProcess) {
    ASSERT_TRUE(start());
    auto callback = world().taps[0].callback;
    auto* const event = reinterpret_cast<CGEventRef>(&callback);
    EXPECT_EQ(callback(nullptr, kCGEventRightMouseDown, event, nullptr), event);
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(std::thread([&] { callback(nullptr, kCGEventRightMouseDown, nullptr, &tap); }).join(), "");
}

TEST_F(EventTapTest, tasksFollowTheCallbackAndCommandsPrecedeTheNextEvent) {
    ASSERT_TRUE(start());
    std::vector<std::string> order;
    decide = [&](PointerEvent event) {
        order.emplace_back("event");
        tap.afterEvent([&] { order.emplace_back("task"); });
        tap.run([&] { order.emplace_back("command from inside"); });
        order.emplace_back("decided");
        return event;
    };
    tap.run([&] { order.emplace_back("command"); });
    std::thread([&] { tap.run([&] { order.emplace_back("command of another thread"); }); }).join();
    EXPECT_THAT(order, ElementsAre("command"));
    hardware(mouse(kCGEventRightMouseDown, {1, 1}, 1));
    runMainQueue();
    EXPECT_THAT(order,
                ElementsAre("command", "command of another thread", "event", "decided", "command from inside", "task"));
}

TEST_F(EventTapTest, aHandlerThatThrowsLeavesTheEventToTheApplication) {
    ASSERT_TRUE(start());
    decide = [](PointerEvent) -> std::optional<PointerEvent> { throw std::runtime_error("no"); };
    hardware(mouse(kCGEventRightMouseDown, {1, 1}, 1));
    EXPECT_EQ(world().delivered.size(), 1U);
    EXPECT_THAT(log.lines(), ElementsAre("tap: a task failed: no"));
}

/// What reaches the applications of a hold whose press is handed on after 0.3 s, and then does `next`.
class HandedOn : public EventTapTest {
protected:
    std::vector<CGEventType> reached(const std::vector<EventData>& next) {
        seen.clear();
        std::optional<PointerEvent> kept;
        const bool started = tap.start([&](const PointerEvent& event) -> Decision {
            seen.push_back(event);
            if (event.type == PointerEventType::rightDown && event.marker == 0) {
                kept = event;
                return {std::nullopt, event.time + std::chrono::milliseconds(300)};
            }
            if (event.type == PointerEventType::timeCame) {
                kept->marker = selfEventMarker;
                tap.post(*kept);
                return {std::nullopt};
            }
            return std::optional(event);
        });
        EXPECT_TRUE(started);
        hardware(mouse(kCGEventRightMouseDown, {10, 20}, 1));
        advance(0.29);
        EXPECT_EQ(seen.size(), 1U) << "too early";
        advance(0.02);
        for (const auto& event : next)
            hardware(event);
        advance(5);
        std::vector<CGEventType> types;
        for (const auto& event : world().delivered)
            types.push_back(event.type);
        tap.stop();
        return types;
    }
    const EventData drag = mouse(kCGEventRightMouseDragged, {40, 20}, 1);
    const EventData release = mouse(kCGEventRightMouseUp, {40, 20}, 1);
};

TEST_F(HandedOn, theRestOfTheHoldIsTheApplications) {
    EXPECT_THAT(reached({drag, release}),
                ElementsAre(kCGEventRightMouseDown, kCGEventRightMouseDragged, kCGEventRightMouseUp));
    EXPECT_EQ(world().delivered[0].location.x, 10);
    EXPECT_EQ(seen[1].time - seen[0].time, std::chrono::milliseconds(300));
}

TEST_F(HandedOn, whatOvertakesThePressWaitsForIt) {
    world().postsAreLate = true;
    EXPECT_THAT(reached({release}), ElementsAre(kCGEventRightMouseDown, kCGEventRightMouseUp));
    world().delivered.clear();
    EXPECT_THAT(reached({drag, drag, release}),
                ElementsAre(kCGEventRightMouseDown, kCGEventRightMouseDragged, kCGEventRightMouseUp));
}

TEST_F(HandedOn, theLeftButtonIsAskedFor) {
    world().leftDown = true;
    reached({release});
    ASSERT_GT(seen.size(), 2U);
    EXPECT_EQ(seen[1].type, PointerEventType::leftDown);
    EXPECT_EQ(seen[2].type, PointerEventType::timeCame);
}

TEST_F(EventTapTest, afterTheStopNothingIsHeld) {
    ASSERT_TRUE(start());
    tap.stop();
    EXPECT_FALSE(tap.installed());
    hardware(mouse(kCGEventRightMouseDown, {1, 1}, 1));
    advance(3);
    EXPECT_EQ(world().delivered.size(), 1U);
    EXPECT_TRUE(seen.empty());
    EXPECT_TRUE(log.lines().empty());
}

} // namespace
} // namespace tarvik
