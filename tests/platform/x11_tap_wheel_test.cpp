// The wheel while the gesture button is held: what the handler is told, and what the application gets to see.
#include "platform/support/tap_fixture.h"

namespace tarvik {
namespace {

TEST_F(X11Tap, turnsOfTheWheelAreReportedAndLeaveNoJump) {
    press = Press::take;
    input("mouse wheel 0 1"); // the application learns the axis's value
    input("mouse wheel 0 1");
    expectSeen({"scroll 1"});

    input("mouse press 3");
    onTap([] {});
    input("mouse wheel 0 1");
    input("mouse wheel 0 1");
    input("mouse wheel 0 -3");
    input("mouse wheel 1 0");
    onTap([] {});
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "wheel -1 0 (-1)", "wheel -1 0 (-1)", "wheel 3 0 (3)", "wheel 0 -1 (-1)",
                 "up 1 at 300,200"});
    input("mouse wheel 0 1");
    expectSeen({"scroll 1"});
}

TEST_F(X11Tap, halfNotchesMakeALineTogether) {
    press = Press::take;
    input("mouse press 3");
    onTap([] {});
    input("mouse wheel 0 -0.5");
    input("mouse wheel 0 -0.5");
    onTap([] {});
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "wheel 0 0 (0.5)", "wheel 1 0 (0.5)", "up 1 at 300,200"});
}

TEST_F(X11Tap, turnsWhileThePressIsBeingDecidedCount) {
    press = Press::take;
    for (const std::string mouse : {"mouse", "mouse2"}) {
        input(mouse + " wheel 0 1");
        input(mouse + " moveto 300 200");
    }
    seenUntil([](const Lines&) { return true; });
    const struct {
        const char* mouse;
        std::vector<int> turns;
    } cases[] = {{"mouse", {1}}, {"mouse", {1, 1}}, {"mouse", {1, 1, 1}}, {"mouse", {1, -1, -1}}, {"mouse2", {-1, -1}}};
    for (const auto& [mouse, turns] : cases) {
        // Some before the tap has listed the axes, some after it.
        for (const std::size_t early : {std::size_t(0), turns.size() / 2, turns.size()}) {
            SCOPED_TRACE(fmt::format("{} {}, {} early", mouse, testing::PrintToString(turns), early));
            Lines expected;
            for (const int turn : turns)
                expected.push_back(fmt::format("wheel {} 0 ({})", -turn, -turn));
            const auto turnThe = [mouse = std::string(mouse), turns = turns](std::size_t from, std::size_t to) {
                DesktopInput wheel;
                for (auto i = from; i < to; ++i)
                    wheel(fmt::format("{} wheel 0 {}", mouse, turns[i]));
            };
            whilePressWaits([=] { turnThe(0, early); });
            input("mouse press 3");
            turnThe(early, turns.size());
            onTap([] {});
            input("mouse release 3");
            auto lines = asked(turns.size() + 2);
            ASSERT_EQ(lines.size(), turns.size() + 2) << testing::PrintToString(lines);
            EXPECT_EQ(lines.front(), "down 1 at 300,200");
            EXPECT_EQ(lines.back(), "up 1 at 300,200");
            // Of two opposite turns within microseconds, which no hand makes, either may be taken for the first.
            EXPECT_THAT(Lines(lines.begin() + 1, lines.end() - 1), testing::UnorderedElementsAreArray(expected));
            // None of them is left in the axis.
            input(fmt::format("{} wheel 0 1", mouse));
            expectSeen({"scroll 1"});
        }
    }
}

TEST_F(X11Tap, turnsThatPassReachTheApplicationAndTheHoldGoesOn) {
    wheel = Wheel::pass;
    input("mouse wheel 0 1");
    expectSeen({});
    input("mouse press 3");
    onTap([] {});
    for (const int turn : {1, 1, -1}) {
        input(fmt::format("mouse wheel 0 {}", turn));
        onTap([] {});
    }
    input("mouse move 5 0");
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "wheel -1 0 (-1)", "wheel -1 0 (-1)", "wheel 1 0 (1)", "drag 1 at 305,200",
                 "up 1 at 305,200"});
    expectSeen({"scroll 1", "scroll 1", "scroll -1", "press 3 at 305,200 mouse", "release 3 at 305,200 mouse"});
    input("mouse wheel 0 1");
    expectSeen({"scroll 1"});
}

TEST_F(X11Tap, turnsThatPassWhileTheButtonGoesUpLeaveNothingDown) {
    wheel = Wheel::pass;
    for (int i = 0; i < 50; ++i) {
        input("mouse press 3");
        input("mouse wheel 0 1");
        input("mouse release 3");
        auto lines = seenUntil([](const Lines& all) { return !all.empty() && all.back() == rightClick[1]; });
        // The turn may be too late to pass.
        std::erase_if(lines, [](const std::string& line) { return line.starts_with("scroll"); });
        ASSERT_EQ(lines, rightClick) << i;
        ASSERT_EQ(client.buttonsDown(), 0U) << i;
    }
}

/// Looks at every turn of the wheel before the application gets it, as window managers do.
class SlowWindowManager {
public:
    SlowWindowManager() {
        XGrabButton(x_->display(), wheelDown, AnyModifier, x_->root(), False, ButtonPressMask, GrabModeSync,
                    GrabModeAsync, None, None);
        XSync(x_->display(), False);
    }
    void waitForTurn() {
        XEvent event;
        ASSERT_TRUE(eventually([&] { return XCheckTypedEvent(x_->display(), ButtonPress, &event) != 0; }));
    }
    void letGo() {
        XAllowEvents(x_->display(), ReplayPointer, CurrentTime);
        XSync(x_->display(), False);
    }

private:
    static constexpr unsigned wheelDown = 5;
    const std::unique_ptr<X11Connection> x_ = X11Connection::open();
};

TEST_F(X11Tap, aSlowWindowManagerEndsNoHold) {
    wheel = Wheel::pass;
    input("mouse wheel 0 1");
    expectSeen({});
    SlowWindowManager windowManager;
    input("mouse press 3");
    onTap([] {});
    input("mouse wheel 0 1");
    windowManager.waitForTurn();
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    windowManager.letGo();
    onTap([] {});
    input("mouse move 5 0");
    onTap([] {});
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "wheel -1 0 (-1)", "drag 1 at 305,200", "up 1 at 305,200"});
    expectSeen({"scroll 1", "press 3 at 305,200 mouse", "release 3 at 305,200 mouse"});
}

TEST_F(X11Tap, aPointerThatDoesNotComeBackEndsTheHold) {
    wheel = Wheel::pass;
    input("mouse wheel 0 1");
    expectSeen({});
    SlowWindowManager windowManager;
    input("mouse press 3");
    onTap([] {});
    input("mouse wheel 0 1");
    expectAsked({"down 1 at 300,200", "wheel -1 0 (-1)", "lost"});
    EXPECT_THAT(log.lines(), testing::ElementsAre("hold lost: another program has the pointer"));
    windowManager.letGo();
    input("mouse release 3");
    expectSeen({"scroll 1"});
    input("mouse click 3");
    expectSeen(rightClick);
}

TEST_F(X11Tap, whoLetsGoWhileATurnPassesHasClicked) {
    wheel = Wheel::pass;
    for (const std::string mouse : {"mouse", "mouse2"}) {
        input(mouse + " wheel 0 1");
        input(mouse + " moveto 300 200");
    }
    seenUntil([](const Lines&) { return true; });
    SlowWindowManager windowManager;
    for (const bool overtaken : {false, true}) {
        SCOPED_TRACE(overtaken ? "another mouse presses before the hold is back" : "alone");
        const Lines toAsk = {"down 1 at 300,200", "wheel -1 0 (-1)", "up 1 at 300,200"};
        Lines toSee = {"scroll 1", rightClick[0], rightClick[1]};
        input("mouse press 3");
        onTap([] {});
        input("mouse wheel 0 1");
        windowManager.waitForTurn();
        input("mouse release 3");
        if (overtaken) {
            input("mouse2 press 3");
            toSee.insert(toSee.end(), {"press 3 at 300,200 mouse2", "release 3 at 300,200 mouse2"});
        }
        windowManager.letGo();
        onTap([] {});
        if (overtaken)
            input("mouse2 release 3");
        EXPECT_THAT(seenUntil([&](const Lines& all) { return all.size() >= toSee.size(); }),
                    testing::UnorderedElementsAreArray(toSee));
        // What becomes of the other mouse's press depends on whether the click comes back before it.
        auto first = asked(toAsk.size());
        if (overtaken)
            first.resize(toAsk.size());
        EXPECT_EQ(first, toAsk);
    }
}

std::ptrdiff_t clicks(int button, const Lines& seen) {
    const auto end = fmt::format("release {} ", button);
    return std::count_if(seen.begin(), seen.end(), [&](const auto& line) { return line.starts_with(end); });
}

/// When the hold ends, earlier turns may not have been dealt with yet.
TEST_F(X11Tap, whoTurnsSeveralTimesAndLetsGoAtOnceHasClicked) {
    wheel = Wheel::pass;
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        input("mouse press 3");
        for (int turn = 0; turn <= round % 6; ++turn)
            input(turn % 2 == 0 ? "mouse wheel 0 1" : "mouse wheel 0 -1");
        input("mouse release 3");
        ASSERT_EQ(clicks(3, seenUntil([](const Lines& all) { return clicks(3, all) >= 1; })), 1);
    }
}

TEST_F(X11Tap, anotherButtonMayBePressedWhileATurnPasses) {
    wheel = Wheel::pass;
    for (int round = 0; round < 30; ++round) {
        SCOPED_TRACE(round);
        for (const char* step : {"press 3", "wheel 0 1", "press 2", "release 2", "release 3"})
            input(std::string("mouse ") + step);
        ASSERT_EQ(clicks(2, seenUntil([](const Lines& all) { return clicks(2, all) >= 1; })), 1);
    }
}

} // namespace
} // namespace tarvik
