// What gesture scripts cannot say: starting, the shared path, and input that no device sends.
#include "engine/gesture_engine.h"
#include "engine/wheel.h"
#include "fakes/fake_engine_ports.h"
#include "fakes/fake_event_tap.h"
#include "fakes/recording_log.h"

#include <gtest/gtest.h>
#include <limits>

namespace tarvik {
namespace {

struct Engine {
    FakeEventTap tap;
    FakeTrail trail;
    FakeActions actions;
    FakeFrontmost frontmost;
    RecordingLog log;
    GestureEngine engine{tap, trail, actions, frontmost, log};
};

TEST(GestureEngine, startsOnceAndTriesAgainAfterARefusal) {
    Engine e;
    e.tap.refuseStart = true;
    EXPECT_FALSE(e.engine.start());
    EXPECT_EQ(e.log.lines(), std::vector<std::string>{"event tap creation failed"});
    e.tap.refuseStart = false;
    EXPECT_TRUE(e.engine.start());
    EXPECT_TRUE(e.engine.start());
    EXPECT_EQ(e.log.lines(), (std::vector<std::string>{"event tap creation failed", "event tap started"}));
}

TEST(GestureEngine, performsOnlyAfterTheEventWasDecided) {
    Engine e;
    auto preferences = std::make_shared<Preferences>();
    preferences->mappings["R"] = {{ActionKind::back, {}}, "Back"};
    e.engine.setPreferences(preferences);
    PointerEvent event;
    e.engine.handle(event);
    event.type = PointerEventType::rightDragged;
    event.location = {50, 0};
    e.engine.handle(event);
    event.type = PointerEventType::rightUp;
    EXPECT_FALSE(e.engine.handle(event));
    EXPECT_TRUE(e.actions.performed.empty());
    ASSERT_TRUE(e.engine.start());
    e.tap.send(PointerEvent{.type = PointerEventType::otherUp});
    EXPECT_EQ(e.actions.performed.size(), 1U);
}

TEST(GestureEngine, hasNoLimitOnThePath) {
    struct CountingTrail final : Trail {
        PathView last;
        void update(const PathView& points, const std::string&) override { last = points; }
        void hide() override {}
    };
    Engine e;
    CountingTrail trail;
    GestureEngine engine(e.tap, trail, e.actions, e.frontmost, e.log);
    PointerEvent event;
    engine.handle(event);
    event.type = PointerEventType::rightDragged;
    PathView early;
    for (int i = 1; i <= 100'000; ++i) {
        event.location = {static_cast<double>(i), 0};
        engine.handle(event);
        if (i == 100)
            early = trail.last;
    }
    ASSERT_EQ(trail.last.count, 100'001U);
    for (std::size_t i = 0; i < trail.last.count; ++i)
        ASSERT_EQ(trail.last[i], (Point{static_cast<double>(i), 0}));
    EXPECT_EQ(early.path, trail.last.path) << "the path is shared, not copied";
    EXPECT_EQ(early.back(), (Point{100, 0}));
}

TEST(Wheel, aDeltaWithoutACounterpartEndsTheProcess) {
    PointerEvent event;
    event.vertical.line = std::numeric_limits<std::int64_t>::min();
    Preferences preferences;
    reverseScrollIfNeeded(event, preferences);
    preferences.reverseVertical = true;
    EXPECT_DEATH(reverseScrollIfNeeded(event, preferences), "");
}

} // namespace
} // namespace tarvik
