// The tap between a real server and an application: what the handler is asked, and what the application gets to see.
#include <gmock/gmock.h> // before Xlib, whose macros it does not survive

#include "platform/linux/x11/x11_event_tap.h"

#include "fakes/fake_screens.h"
#include "fakes/recording_log.h"
#include "platform/linux/x11/x11_button_grab.h"
#include "platform/support/desktop_input.h"
#include "platform/support/eventually.h"
#include "platform/support/pointer_client.h"
#include "platform/support/x_client.h"

#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <fmt/format.h>

#include <filesystem>
#include <future>
#include <mutex>
#include <stdexcept>

namespace tarvik {
namespace {

using Lines = std::vector<std::string>;

/// What the handler does with a press, and with turns of the wheel during the hold.
enum class Press { refuse, take, giveBack };
enum class Wheel { swallow, pass };

class X11Tap : public testing::Test {
protected:
    void SetUp() override {
        input("mouse moveto 300 200");
        ASSERT_TRUE(start());
    }
    void TearDown() override {
        tap.stop();
        EXPECT_EQ(client.buttonsDown(), 0U);
    }

    bool start() {
        return tap.start([this](PointerEvent event) { return decide(std::move(event)); });
    }

    std::optional<PointerEvent> decide(PointerEvent event) {
        using enum PointerEventType;
        switch (event.type) {
        case rightDown:
        case otherDown:
            note("down", event);
            if (whilePressWaits)
                whilePressWaits();
            if (press == Press::refuse)
                return event;
            down = event;
            return std::nullopt;
        case rightUp:
        case otherUp:
            note("up", event);
            if (press == Press::giveBack) {
                down->location = event.location;
                tap.post(*down);
                tap.post(event);
            }
            return std::nullopt;
        case scrollWheel: {
            const std::lock_guard lock(mutex);
            asked_.push_back(fmt::format("wheel {} {} ({:g})", event.vertical.line, event.horizontal.line,
                                         event.vertical.fixed + event.horizontal.fixed));
            return wheel == Wheel::pass ? std::optional(event) : std::nullopt;
        }
        default:
            note("drag", event);
            return std::nullopt;
        }
    }

    void note(const char* what, const PointerEvent& event) {
        const std::lock_guard lock(mutex);
        asked_.push_back(fmt::format("{} {} at {:g},{:g}", what, event.button, event.location.x, event.location.y));
    }

    /// Runs on the tap's thread, between two events, once everything that the server has sent so far is dealt with.
    void onTap(const std::function<void()>& command) {
        // Commands also run between two events that have arrived: more rounds than events can be waiting.
        for (int round = 0; round < 100; ++round)
            oneRound([] {});
        oneRound(command);
    }
    void oneRound(const std::function<void()>& command) {
        std::promise<void> done;
        tap.run([&] {
            command();
            done.set_value();
        });
        done.get_future().wait();
    }

    /// What the handler has been asked since the last time: these lines and no more.
    void expectAsked(const Lines& expected) {
        eventually([&] {
            const std::lock_guard lock(mutex);
            return asked_.size() >= expected.size();
        });
        onTap([] {});
        const std::lock_guard lock(mutex);
        EXPECT_EQ(std::exchange(asked_, {}), expected);
    }

    /// What the application has seen since the last time, once `until` is there. Ends with a click of a button that
    /// nobody cares for, so that nothing is still to come.
    Lines seenUntil(const std::function<bool(const Lines&)>& until) {
        Lines lines;
        const auto read = [&] {
            for (const auto& event : client.read())
                lines.push_back(text(event));
        };
        EXPECT_TRUE(eventually([&] {
            read();
            return until(lines);
        })) << testing::PrintToString(lines);
        onTap([] {});
        input("mouse click 8");
        EXPECT_TRUE(eventually([&] {
            read();
            return std::any_of(lines.begin(), lines.end(),
                               [](const auto& line) { return line.starts_with("release 8"); });
        }));
        std::erase_if(lines, [](const std::string& line) { return line.find(" 8 ") != std::string::npos; });
        return lines;
    }
    /// These lines and no more.
    void expectSeen(const Lines& expected) {
        EXPECT_EQ(seenUntil([&](const Lines& lines) { return lines.size() >= expected.size(); }), expected);
    }

    std::string text(const PointerSeen& event) {
        if (event.what == PointerSeen::What::scroll)
            return fmt::format("scroll {:g}", event.scrolled / notch);
        return fmt::format("{} {} at {:g},{:g} {}", event.what == PointerSeen::What::press ? "press" : "release",
                           event.button, event.location.x, event.location.y, client.deviceName(event.source));
    }

    int deviceId(const std::string& name) {
        int count = 0;
        int found = 0;
        auto* devices = XIQueryDevice(client.display(), XIAllDevices, &count);
        for (int i = 0; i < count; ++i)
            found = devices[i].name == name ? devices[i].deviceid : found;
        XIFreeDeviceInfo(devices);
        return found;
    }

    static constexpr double notch = 120;

    DesktopInput input;
    PointerClient client{PointerClient::Protocol::xi2, {100, 100, 600, 400}};
    fake::FakeScreens screens;
    RecordingLog log;
    X11EventTap tap{screens, std::make_shared<const DesktopEntries>(std::vector<std::filesystem::path>(), ""), log,
                    [] {}};

    // Set while nothing is held; read on the tap's thread.
    std::atomic<Press> press = Press::giveBack;
    std::atomic<Wheel> wheel = Wheel::swallow;
    std::function<void()> whilePressWaits;

    std::optional<PointerEvent> down;
    std::mutex mutex;
    Lines asked_;
};

const Lines rightClick = {"press 3 at 300,200 mouse", "release 3 at 300,200 mouse"};

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

TEST_F(X11Tap, aTurnWhileThePressIsBeingDecidedCounts) {
    press = Press::take;
    input("mouse wheel 0 1");
    input("mouse wheel 0 1");
    expectSeen({"scroll 1"});
    whilePressWaits = [] { DesktopInput()("mouse wheel 0 1"); };
    input("mouse press 3");
    onTap([] {});
    input("mouse wheel 0 -1");
    onTap([] {});
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "wheel -1 0 (-1)", "wheel 1 0 (1)", "up 1 at 300,200"});
    input("mouse wheel 0 1");
    expectSeen({"scroll 1"});
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
    for (int i = 0; i < 100; ++i) {
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

TEST_F(X11Tap, stoppedBeforeAPressIsDecidedTheApplicationGetsIt) {
    whilePressWaits = [this] { tap.run([] { throw std::runtime_error("on purpose"); }); };
    press = Press::refuse;
    input("mouse press 3");
    tap.stop();
    input("mouse release 3");
    ASSERT_TRUE(start());
    expectSeen(rightClick);
    EXPECT_TRUE(log.contains("tap: a task failed: on purpose"));
}

TEST_F(X11Tap, aHandlerThatThrowsTakesNothing) {
    whilePressWaits = [] { throw std::runtime_error("on purpose"); };
    input("mouse click 3");
    expectSeen(rightClick);
    EXPECT_TRUE(log.contains("tap: a task failed: on purpose"));
}

TEST_F(X11Tap, anotherTriggerWaitsForTheEndOfTheHold) {
    input("mouse press 3");
    tap.run([this] { tap.setTriggerButton(TriggerButton::middle); });
    input("mouse move 5 0");
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "drag 1 at 305,200", "up 1 at 305,200"});
    expectSeen({"press 3 at 305,200 mouse", "release 3 at 305,200 mouse"});

    input("mouse click 3");
    input("mouse click 2");
    expectAsked({"down 2 at 305,200", "up 2 at 305,200"});
    expectSeen({"press 3 at 305,200 mouse", "release 3 at 305,200 mouse", "press 2 at 305,200 mouse",
                "release 2 at 305,200 mouse"});
}

TEST_F(X11Tap, anotherProgramHoldsTheButton) {
    tap.stop();
    X11ButtonGrab other(client.display(), DefaultRootWindow(client.display()));
    ASSERT_TRUE(other.grab(3));
    EXPECT_FALSE(start());
    EXPECT_FALSE(tap.installed());
    EXPECT_TRUE(log.contains("no tap: another program holds the button"));

    other.release();
    XSync(client.display(), False);
    EXPECT_TRUE(start());
    EXPECT_TRUE(tap.installed());

    // It also asks again by itself when it loses the button later on.
    ASSERT_TRUE(other.grab(2));
    onTap([this] { tap.setTriggerButton(TriggerButton::middle); });
    EXPECT_TRUE(eventually([&] { return !tap.installed(); }));
    other.release();
    XSync(client.display(), False);
    EXPECT_TRUE(eventually([&] { return tap.installed(); }));
}

TEST_F(X11Tap, aSecondPointerComesAndGoes) {
    press = Press::take;
    auto* display = client.display();
    const auto change = [&](XIAnyHierarchyChangeInfo info) {
        XIChangeHierarchy(display, &info, 1);
        XSync(display, False);
    };
    XIAnyHierarchyChangeInfo info = {};
    char name[] = "second";
    info.add = {XIAddMaster, name, True, True};
    change(info);
    info.attach = {XIAttachSlave, deviceId("mouse2"), deviceId("second pointer")};
    change(info);
    onTap([] {});
    input("mouse2 moveto 400 300");
    input("mouse2 press 3");
    expectAsked({"down 1 at 400,300"});
    info.remove = {XIRemoveMaster, deviceId("second pointer"), XIAttachToMaster, deviceId("Virtual core pointer"),
                   deviceId("Virtual core keyboard")};
    change(info);
    expectAsked({"up 1 at 400,300"});
    input("mouse2 release 3");
    input("mouse moveto 300 200");
    input("mouse2 click 3");
    input("mouse click 3");
    expectAsked({"down 1 at 300,200", "up 1 at 300,200", "down 1 at 300,200", "up 1 at 300,200"});
    expectSeen({});
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

// The last one: the driver of the desktop's mice does not serve a device again that has been switched off.
TEST_F(X11Tap, aMouseThatIsUnpluggedReleasesItsButtons) {
    input("mouse2 click 3");
    expectSeen({"press 3 at 300,200 mouse2", "release 3 at 300,200 mouse2"});
    expectAsked({"down 1 at 300,200", "up 1 at 300,200"});
    input("mouse2 press 3");
    onTap([] {});

    auto* display = client.display();
    unsigned char off = 0;
    XIChangeProperty(display, deviceId("mouse2"), XInternAtom(display, "Device Enabled", False),
                     XInternAtom(display, "INTEGER", False), 8, XIPropModeReplace, &off, 1);
    XSync(display, False);
    expectAsked({"down 1 at 300,200", "up 1 at 300,200"});
    // The device is away, so its click comes from the server's own.
    expectSeen({"press 3 at 300,200 Virtual core XTEST pointer", "release 3 at 300,200 Virtual core XTEST pointer"});
    input("mouse click 3");
    expectSeen(rightClick);
}

} // namespace
} // namespace tarvik
