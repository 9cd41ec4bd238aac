// The reversal of the wheel: what applications of both kinds get to see, and what becomes of the devices' settings.
#include "platform/support/tap_fixture.h"

#include "platform/linux/x11/x11_device_property.h"
#include "platform/linux/x11/x11_pointer_probe.h"

#include <X11/extensions/XInput.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <array>

namespace tarvik {
namespace {

constexpr const char* naturalScrolling = "libinput Natural Scrolling Enabled";
constexpr const char* before = "Tarvik Natural Scrolling Before";

/// Notches downwards and to the right.
struct Turned {
    double vertical = 0;
    double horizontal = 0;
    friend bool operator==(const Turned&, const Turned&) = default;
    friend void PrintTo(const Turned& turned, std::ostream* out) {
        *out << turned.vertical << " down, " << turned.horizontal << " right";
    }
};

class X11Reversal : public X11Tap {
protected:
    void SetUp() override {
        X11Tap::SetUp();
        for (const char* mouse : {"mouse", "mouse2"}) {
            input(fmt::format("{} wheel 1 1", mouse)); // the application learns where the axes are
            input(fmt::format("{} moveto 300 200", mouse));
        }
        seen();
    }

    void reverse(bool vertical, bool horizontal) {
        onTap([&] { tap.setWheelReversal({vertical, horizontal}); });
        onTap([] {});
    }

    /// What an application has seen since the last time, once the tap has nothing more to do.
    Turned seen(PointerClient& application) {
        // Each look of the tap makes events of its own, at most twice, and the window manager looks at each of them.
        for (int round = 0; round < 4; ++round) {
            onTap([&] { XSync(application.display(), False); });
            probe.waitUntilFree(deviceId("Virtual core pointer"), std::chrono::seconds(1));
        }
        Turned sum;
        for (const auto& event : application.read()) {
            if (event.what == PointerSeen::What::scroll)
                (event.horizontal ? sum.horizontal : sum.vertical) += event.scrolled / notch;
            else if (event.what == PointerSeen::What::press && event.button >= 4 && event.button <= 7)
                (event.button <= 5 ? sum.vertical : sum.horizontal) += event.button % 2 == 0 ? -1 : 1;
        }
        return sum;
    }
    Turned seen() { return seen(client); }

    Turned turn(const std::string& mouse, double right, double down) {
        input(fmt::format("{} wheel {} {}", mouse, right, down));
        return seen();
    }

    Atom atom(const char* name) { return XInternAtom(client.display(), name, False); }
    std::vector<unsigned char> bytes(const std::string& device, const char* property) {
        return readDeviceBytes(client.display(), deviceId(device), atom(property));
    }
    void setBytes(const std::string& device, const char* property, const std::vector<unsigned char>& value) {
        writeDeviceBytes(client.display(), deviceId(device), atom(property), value);
        XSync(client.display(), False);
        if (tap.installed())
            onTap([] {});
    }
    void removeProperties(const std::string& device) {
        for (const char* name :
             {naturalScrolling, before, "libinput Tapping Enabled", "libinput Scroll Methods Available"})
            XIDeleteProperty(client.display(), deviceId(device), atom(name));
        XSync(client.display(), False);
    }
    void TearDown() override {
        X11Tap::TearDown();
        removeProperties("mouse");
        removeProperties("mouse2");
    }

    X11PointerProbe probe{client.display(), DefaultRootWindow(client.display())};

    /// The buttons that a client sees when another program clicks this one.
    Lines testClick(unsigned button) {
        XTestFakeButtonEvent(client.display(), button, True, CurrentTime);
        XTestFakeButtonEvent(client.display(), button, False, CurrentTime);
        XSync(client.display(), False);
        return seenUntil([](const Lines& lines) { return lines.size() >= 2; });
    }
};

Lines clickOf(int button) {
    const std::string rest = fmt::format(" {} at 300,200 Virtual core XTEST pointer", button);
    return {"press" + rest, "release" + rest};
}

/// 500 notches of two mice in bursts of one direction each, as quick as the server takes them.
Turned bursts(DesktopInput& input) {
    Turned sum;
    for (int burst = 0; burst < 20; ++burst) {
        for (int i = 0; i < 25; ++i) {
            const int right = burst % 3 == 0 ? (burst % 9 == 0 ? 1 : -1) : 0;
            const int down = right != 0 ? 0 : (burst % 7 < 5 ? 1 : -1);
            input(fmt::format("{} wheel {} {}", burst % 5 == 0 ? "mouse2" : "mouse", right, down));
            sum.horizontal += right;
            sum.vertical += down;
        }
    }
    return sum;
}

TEST_F(X11Reversal, everyNotchOfEitherAxisForBothKindsOfApplication) {
    const auto check = [this](PointerClient& application) {
        for (const auto& [vertical, horizontal] :
             {std::pair(true, false), {false, true}, {true, true}, {false, false}}) {
            reverse(vertical, horizontal);
            const auto hand = bursts(input);
            EXPECT_EQ(seen(application), (Turned{vertical ? -hand.vertical : hand.vertical,
                                                 horizontal ? -hand.horizontal : hand.horizontal}))
                << "reversed: vertical " << vertical << ", horizontal " << horizontal;
        }
    };
    check(client);
    PointerClient core(PointerClient::Protocol::core, {100, 100, 600, 400}); // in front of the other one
    check(core);
}

TEST_F(X11Reversal, fractionsOfAHighResolutionWheel) {
    reverse(true, false);
    Turned sum;
    for (int i = 0; i < 40; ++i) {
        const auto now = turn("mouse", 0, 0.375);
        sum.vertical += now.vertical;
    }
    // 15 notches; what has not yet made a notch of the server's is still to come.
    EXPECT_NEAR(sum.vertical, -15, 2);
    sum.vertical += turn("mouse", 0, 1).vertical + turn("mouse", 0, 1).vertical;
    EXPECT_EQ(sum.vertical, -17);
}

TEST_F(X11Reversal, underAnotherProgramsGrab) {
    reverse(true, false);
    auto* display = client.display();
    unsigned char bits[4] = {};
    XISetMask(bits, XI_Motion);
    XIEventMask mask{deviceId("Virtual core pointer"), sizeof bits, bits};
    ASSERT_EQ(XIGrabDevice(display, mask.deviceid, DefaultRootWindow(display), CurrentTime, None, XIGrabModeAsync,
                           XIGrabModeAsync, True, &mask),
              GrabSuccess);
    EXPECT_EQ(turn("mouse", 0, 2), (Turned{-2, 0}));
    XIUngrabDevice(display, mask.deviceid, CurrentTime);
    input("mouse press 1"); // the application's drag
    EXPECT_EQ(turn("mouse", 0, 1), (Turned{-1, 0}));
    input("mouse release 1");
}

TEST_F(X11Reversal, wheelButtonsOfOtherPrograms) {
    for (const auto& [vertical, horizontal] : {std::pair(true, false), {true, true}, {false, false}}) {
        reverse(vertical, horizontal);
        EXPECT_EQ(testClick(4), clickOf(vertical ? 5 : 4));
        EXPECT_EQ(testClick(7), clickOf(horizontal ? 6 : 7));
    }
    reverse(true, false);
    tap.stop();
    EXPECT_EQ(
        readDeviceBytes(client.display(), deviceId("Virtual core XTEST pointer"), atom("Tarvik Button Map Before")),
        std::vector<unsigned char>());
    ASSERT_TRUE(start());
    EXPECT_EQ(testClick(5), clickOf(4)); // what was asked for before the start counts
}

TEST_F(X11Reversal, aWheelButtonThatIsDownIsTurnedRoundWhenItIsUp) {
    for (const bool reversed : {true, false}) {
        XTestFakeButtonEvent(client.display(), 4, True, CurrentTime);
        XSync(client.display(), False);
        reverse(reversed, false);
        XTestFakeButtonEvent(client.display(), 4, False, CurrentTime);
        const int down = reversed ? 4 : 5; // as it was at the press
        EXPECT_EQ(seenUntil([](const Lines& lines) { return lines.size() >= 2; }), clickOf(down));
        EXPECT_EQ(testClick(4), clickOf(reversed ? 5 : 4));
    }
}

TEST_F(X11Reversal, aHoldGetsTheHandsOwnTurns) {
    press = Press::take;
    reverse(true, true);
    for (const auto mode : {Wheel::swallow, Wheel::pass}) {
        wheel = mode;
        EXPECT_EQ(turn("mouse", 0, 1), (Turned{-1, 0}));
        input("mouse press 3");
        onTap([] {});
        for (int i = 0; i < 3; ++i) {
            input("mouse wheel 0 1");
            onTap([] {});
        }
        input("mouse release 3");
        expectAsked({"down 1 at 300,200", "wheel -1 0 (-1)", "wheel -1 0 (-1)", "wheel -1 0 (-1)", "up 1 at 300,200"});
        EXPECT_EQ(seen(), (Turned{mode == Wheel::pass ? 3. : 0., 0}));
        EXPECT_EQ(turn("mouse", 0, 1), (Turned{-1, 0}));
    }
}

TEST_F(X11Reversal, aHoldRightAfterATurn) {
    press = Press::take;
    reverse(true, false);
    for (int i = 0; i < 50; ++i) {
        input("mouse wheel 0 1");
        input("mouse press 3");
        onTap([] {});
        input("mouse release 3");
        // The turn may come too late to be the application's; it is never the hold's twice over.
        onTap([] {});
        const auto lines = taken(asked_);
        EXPECT_LE(std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.starts_with("wheel"); }),
                  1)
            << testing::PrintToString(lines);
    }
    seen();
    EXPECT_EQ(turn("mouse", 0, 1), (Turned{-1, 0}));
}

TEST_F(X11Reversal, whatScrollsByTouchIsLeftAlone) {
    const std::array<std::pair<const char*, std::vector<unsigned char>>, 2> touch = {
        {{"libinput Tapping Enabled", {0}}, {"libinput Scroll Methods Available", {1, 0, 0}}}};
    for (const auto& [property, value] : touch) {
        setBytes("mouse2", naturalScrolling, {1});
        setBytes("mouse2", property, value);
        reverse(true, true);
        EXPECT_EQ(turn("mouse2", -1, 2), (Turned{2, -1})) << property;
        EXPECT_EQ(turn("mouse", -1, 2), (Turned{-2, 1})) << property;
        EXPECT_EQ(bytes("mouse2", naturalScrolling), std::vector<unsigned char>{1});
        reverse(false, false);
        removeProperties("mouse2");
    }
    // A button for scrolling and no fingers: a mouse.
    setBytes("mouse2", "libinput Scroll Methods Available", {0, 0, 1});
    reverse(true, true);
    EXPECT_EQ(turn("mouse2", -1, 2), (Turned{-2, 1}));
}

// The desktop's driver has no natural scrolling: what it would turn round stays as the hand made it here.
TEST_F(X11Reversal, theDriverDoesItWhereItCan) {
    using Bytes = std::vector<unsigned char>;
    for (const unsigned char own : {0, 1}) {
        const auto other = static_cast<unsigned char>(1 - own);
        setBytes("mouse", naturalScrolling, {own});
        reverse(true, true);
        EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{other});
        EXPECT_EQ(bytes("mouse", before), (Bytes{own, other}));
        EXPECT_EQ(turn("mouse", 1, 1), (Turned{1, 1}));
        EXPECT_EQ(turn("mouse2", 1, 1), (Turned{-1, -1}));
        reverse(true, false); // the horizontal axis is turned back
        EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{other});
        EXPECT_EQ(turn("mouse", 1, 1), (Turned{1, -1}));
        reverse(false, true);
        EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{own});
        EXPECT_EQ(turn("mouse", 1, 1), (Turned{1, -1}));
        reverse(true, false);
        tap.stop();
        EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{own});
        EXPECT_EQ(bytes("mouse", before), Bytes());
        tap.setWheelReversal({});
        ASSERT_TRUE(start());
    }
}

TEST_F(X11Reversal, theUserChangesNaturalScrollingMeanwhile) {
    using Bytes = std::vector<unsigned char>;
    setBytes("mouse", naturalScrolling, {0});
    reverse(true, true);
    for (const unsigned char wish : {1, 1, 0, 1}) { // the same as what we wrote, and the other one
        setBytes("mouse", naturalScrolling, {wish});
        const auto reversed = static_cast<unsigned char>(1 - wish);
        EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{reversed});
        EXPECT_EQ(bytes("mouse", before), (Bytes{wish, reversed}));
    }
    reverse(false, false);
    EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{1});
    setBytes("mouse", naturalScrolling, {0}); // no longer our business
    EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{0});
}

TEST_F(X11Reversal, whatACrashLeftIsPutRight) {
    using Bytes = std::vector<unsigned char>;
    tap.stop();
    setBytes("mouse", naturalScrolling, {1});
    setBytes("mouse", before, {0, 1});
    setBytes("mouse2", naturalScrolling, {0}); // somebody has set it since
    setBytes("mouse2", before, {0, 1});
    tap.setWheelReversal({true, true});
    ASSERT_TRUE(start());
    EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{1});
    EXPECT_EQ(bytes("mouse2", naturalScrolling), Bytes{1});
    tap.stop();
    EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{0});
    setBytes("mouse", naturalScrolling, {1});
    setBytes("mouse", before, {0, 1});
    tap.setWheelReversal({});
    ASSERT_TRUE(start());
    EXPECT_EQ(bytes("mouse", naturalScrolling), Bytes{0});
    EXPECT_EQ(bytes("mouse", before), Bytes());
    EXPECT_EQ(bytes("mouse2", naturalScrolling), Bytes{0});
}

TEST_F(X11Reversal, aHoldOfADeviceWhoseDriverReverses) {
    setBytes("mouse", naturalScrolling, {0});
    reverse(true, true);
    wheel = Wheel::pass;
    input("mouse press 3");
    onTap([] {});
    input("mouse wheel 0 1"); // a hand's upward turn, as such a driver reports it
    onTap([] {});
    input("mouse release 3");
    expectAsked({"down 1 at 300,200", "wheel 1 0 (1)", "up 1 at 300,200"});
    EXPECT_EQ(seen(), (Turned{-1, 0}));
}

TEST_F(X11Reversal, devicesThatCome) {
    reverse(true, false);
    auto* display = client.display();
    const auto change = [&](XIAnyHierarchyChangeInfo info) {
        XIChangeHierarchy(display, &info, 1);
        XSync(display, False);
        onTap([] {});
    };
    XIAnyHierarchyChangeInfo info = {};
    char name[] = "second";
    info.add = {XIAddMaster, name, True, True};
    change(info);
    EXPECT_FALSE(bytes("second XTEST pointer", "Tarvik Button Map Before").empty());
    info.remove = {XIRemoveMaster, deviceId("second pointer"), XIAttachToMaster, deviceId("Virtual core pointer"),
                   deviceId("Virtual core keyboard")};
    change(info);
    EXPECT_EQ(turn("mouse", 0, 1), (Turned{-1, 0}));

    // Out of use and back again: the axis counts on from where it was, or anew.
    info.detach = {XIDetachSlave, deviceId("mouse2")};
    change(info);
    input("mouse2 wheel 0 1");
    info.attach = {XIAttachSlave, deviceId("mouse2"), deviceId("Virtual core pointer")};
    change(info);
    turn("mouse2", 0, 1);
    EXPECT_EQ(turn("mouse2", 0, 1), (Turned{-1, 0}));
}

} // namespace
} // namespace tarvik
