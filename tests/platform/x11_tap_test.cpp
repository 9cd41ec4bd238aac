// The tap between a real server and an application: what the handler is asked, and what the application gets to see.
#include "platform/support/tap_fixture.h"

#include "platform/support/x_client.h"

#include <X11/extensions/XTest.h>

#include <stdexcept>

namespace tarvik {
namespace {

TEST_F(X11Tap, refusedPressesAreTheApplications) {
    press = Press::refuse;
    input("mouse click 3");
    expectAsked({"down 1 at 300,200"});
    expectSeen(rightClick);
}

TEST_F(X11Tap, clicksGoBackFromTheirDeviceToWhereTheButtonWasReleased) {
    input("mouse press 3");
    input("mouse move 5 3");
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "drag 1 at 305,203", "up 1 at 305,203"});
    expectSeen({"press 3 at 305,203 mouse", "release 3 at 305,203 mouse"});

    input("mouse2 click 3");
    expectSeen({"press 3 at 305,203 mouse2", "release 3 at 305,203 mouse2"});
}

TEST_F(X11Tap, takenHoldsLeaveNoTrace) {
    press = Press::take;
    input("mouse press 3");
    input("mouse move 80 0");
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "drag 1 at 380,200", "up 1 at 380,200"});
    expectSeen({});
}

TEST_F(X11Tap, clicksOfOtherProgramsAreTheUsers) {
    XTestFakeButtonEvent(client.display(), 3, True, CurrentTime);
    XTestFakeButtonEvent(client.display(), 3, False, CurrentTime);
    XSync(client.display(), False);
    expectAsked({"down 1 at 300,200", "up 1 at 300,200"});
    expectSeen({"press 3 at 300,200 Virtual core XTEST pointer", "release 3 at 300,200 Virtual core XTEST pointer"});
}

TEST_F(X11Tap, otherButtonsDuringTheHoldComeAfterIt) {
    input("mouse press 3");
    input("mouse2 click 1");
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "up 1 at 300,200"});
    expectSeen({rightClick[0], rightClick[1], "press 1 at 300,200 mouse2", "release 1 at 300,200 mouse2"});

    // The other button outlasts the hold.
    input("mouse press 3");
    input("mouse press 1");
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "up 1 at 300,200"});
    input("mouse move 10 0");
    input("mouse release 1");
    expectAsked({});
    expectSeen({rightClick[0], rightClick[1], "press 1 at 310,200 mouse", "release 1 at 310,200 mouse"});
}

TEST_F(X11Tap, aPressWhileAnotherButtonIsDownIsNotOurs) {
    input("mouse press 1");
    input("mouse click 3");
    input("mouse release 1");
    expectAsked({});
    expectSeen({"press 1 at 300,200 mouse", rightClick[0], rightClick[1], "release 1 at 300,200 mouse"});
}

TEST_F(X11Tap, swappedButtons) {
    const auto map = [&](std::vector<unsigned char> buttons) {
        std::vector<unsigned char> all(32);
        all.resize(static_cast<std::size_t>(XGetPointerMapping(client.display(), all.data(), 32)));
        std::copy(buttons.begin(), buttons.end(), all.begin());
        return XSetPointerMapping(client.display(), all.data(), static_cast<int>(all.size()));
    };
    ASSERT_EQ(map({3, 2, 1}), MappingSuccess);
    onTap([] {});
    input("mouse press 1");
    input("mouse click 3");
    input("mouse release 1");
    expectAsked({"down 1 at 300,200", "up 1 at 300,200"});
    expectSeen({rightClick[0], rightClick[1], "press 1 at 300,200 mouse", "release 1 at 300,200 mouse"});
    wheel = Wheel::pass;
    input("mouse press 1");
    input("mouse wheel 0 1");
    onTap([] {});
    input("mouse release 1");
    expectAsked({"down 1 at 300,200", "wheel -1 0 (-1)", "up 1 at 300,200"});
    EXPECT_EQ(map({1, 2, 3}), MappingSuccess);
}

TEST_F(X11Tap, stoppedInAHoldNothingStaysDown) {
    input("mouse press 3");
    input("mouse press 1");
    expectAsked({"down 1 at 300,200"});
    tap.stop();
    EXPECT_FALSE(tap.installed());
    EXPECT_EQ(client.buttonsDown(), 0U);
    input("mouse release 3");
    input("mouse release 1");
    ASSERT_TRUE(start());
    expectSeen({});
    input("mouse click 3");
    expectSeen(rightClick);
}

TEST_F(X11Tap, stoppedAroundAPressTheApplicationGetsIt) {
    press = Press::refuse;
    for (int i = 0; i < 30; ++i) {
        input("mouse press 3");
        tap.stop();
        input("mouse release 3");
        ASSERT_TRUE(start());
        expectSeen(rightClick);
    }
}

TEST_F(X11Tap, whatThrowsTakesNothing) {
    whilePressWaits([] { throw std::runtime_error("on purpose"); });
    input("mouse click 3");
    expectSeen(rightClick);
    tap.run([] { throw std::runtime_error("a command, too"); });
    onTap([] {});
    EXPECT_THAT(log.lines(),
                testing::ElementsAre("tap: a task failed: on purpose", "tap: a task failed: a command, too"));
}

TEST_F(X11Tap, anotherTriggerWaitsForTheEndOfTheHold) {
    input("mouse press 3");
    expectAsked({"down 1 at 300,200"});
    tap.run([this] { tap.setTriggerButton(TriggerButton::middle); });
    input("mouse move 5 0");
    input("mouse release 3");
    expectAsked({"drag 1 at 305,200", "up 1 at 305,200"});
    expectSeen({"press 3 at 305,200 mouse", "release 3 at 305,200 mouse"});

    input("mouse click 3");
    input("mouse click 2");
    expectAsked({"down 2 at 305,200", "up 2 at 305,200"});
    expectSeen({"press 3 at 305,200 mouse", "release 3 at 305,200 mouse", "press 2 at 305,200 mouse",
                "release 2 at 305,200 mouse"});
}

TEST_F(X11Tap, theFrontmostApplicationIsTheActiveWindows) {
    const auto frontmost = [&] {
        std::optional<std::string> application;
        onTap([&] { application = tap.frontmost().frontmostApplication(); });
        return application;
    };
    XClient other;
    const auto first = other.open({.instance = "first", .className = "First"});
    EXPECT_TRUE(eventually([&] { return frontmost() == "First"; }));
    const auto second = other.open({.instance = "second", .className = "Second"});
    EXPECT_TRUE(eventually([&] { return frontmost() == "Second"; }));
    other.destroy(second);
    other.activate(first);
    EXPECT_TRUE(eventually([&] { return frontmost() == "First"; }));
}

} // namespace
} // namespace tarvik
