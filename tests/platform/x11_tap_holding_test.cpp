// A hold that turns into something else when its time has come: a drag of the application's, or nothing at all.
#include "platform/support/tap_fixture.h"

#include <chrono>
#include <thread>

namespace tarvik {
namespace {

using std::chrono::milliseconds;

class X11TapHolding : public X11Tap {
protected:
    bool start() override {
        return tap.start([this](PointerEvent event) { return answer(std::move(event)); });
    }

    Decision answer(const PointerEvent& event) {
        using enum PointerEventType;
        if (event.type == timeCame) {
            const std::lock_guard lock(mutex);
            asked_.push_back(event.time >= due_ ? "time" : "too early");
            if (beforeAnswer)
                beforeAnswer();
            if (drop)
                tap.dropHold();
            else
                tap.post(*down);
            return {std::nullopt, {}};
        }
        if (event.button == 0 || event.button == 3) {
            note(event.type == leftDown || event.type == otherDown ? "other down" : "other up", event);
            return {std::nullopt, wakeAt_};
        }
        auto decision = decide(event);
        if (event.type == rightUp || event.type == otherUp)
            wakeAt_.reset();
        else if (event.type == rightDown || event.type == otherDown)
            wakeAt_ = due_ = event.time + delay;
        return {std::move(decision), wakeAt_};
    }

    milliseconds delay{100};
    bool drop = false;
    /// On the tap's thread, when the time has come and before the answer.
    std::function<void()> beforeAnswer;

private:
    std::chrono::nanoseconds due_{};
    std::optional<std::chrono::nanoseconds> wakeAt_;
};

TEST_F(X11TapHolding, theApplicationDrags) {
    for (const std::string mouse : {"mouse", "mouse2"}) {
        input("mouse moveto 300 200");
        input(mouse + " press 3");
        expectAsked({"down 1 at 300,200", "time"});
        EXPECT_TRUE(eventually([&] { return client.buttonsDown() == Button3Mask; }));
        input(mouse + " move 40 30");
        input(mouse + " release 3");
        expectAsked({});
        expectSeen({"press 3 at 300,200 " + mouse, "release 3 at 340,230 " + mouse});

        input(mouse + " press 3"); // the next one is a click
        input(mouse + " release 3");
        expectAsked({"down 1 at 340,230", "up 1 at 340,230"});
        expectSeen({"press 3 at 340,230 " + mouse, "release 3 at 340,230 " + mouse});
    }
}

TEST_F(X11TapHolding, thePressIsWhereItWas) {
    delay = milliseconds(400);
    input("mouse press 3");
    input("mouse move 4 3");
    expectAsked({"down 1 at 300,200", "drag 1 at 304,203", "time"});
    input("mouse move 40 0");
    input("mouse release 3");
    expectSeen({"press 3 at 300,200 mouse", "release 3 at 340,200 mouse"});
}

TEST_F(X11TapHolding, theHandLetsGoWhenTheTimeComes) {
    beforeAnswer = [&] { input("mouse release 3"); };
    input("mouse press 3");
    expectAsked({"down 1 at 300,200", "time"});
    expectSeen(rightClick);
    beforeAnswer = nullptr;

    // About then, a little earlier or later each time.
    delay = milliseconds(15);
    for (int i = 0; i < 40; ++i) {
        input("mouse press 3");
        std::this_thread::sleep_for(std::chrono::microseconds(12'000 + 150 * i));
        input("mouse release 3");
        expectSeen(rightClick);
        ASSERT_EQ(client.buttonsDown(), 0U);
    }
    taken(asked_);
}

TEST_F(X11TapHolding, aDroppedHoldIsAsIfItHadNotBeen) {
    drop = true;
    input("mouse press 3");
    input("mouse2 press 1");
    input("mouse2 press 8");
    input("mouse2 release 8");
    expectAsked(
        {"down 1 at 300,200", "other down 0 at 300,200", "other down 3 at 300,200", "other up 3 at 300,200", "time"});
    EXPECT_TRUE(eventually([&] { return client.buttonsDown() == 0; }));
    input("mouse release 3");
    input("mouse2 release 1");
    expectAsked({});
    expectSeen({});

    delay = milliseconds(5000);
    input("mouse click 3");
    expectSeen(rightClick);
    input("mouse click 1");
    expectSeen({"press 1 at 300,200 mouse", "release 1 at 300,200 mouse"});
}

} // namespace
} // namespace tarvik
