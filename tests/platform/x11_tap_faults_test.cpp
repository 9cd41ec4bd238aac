// The tap when devices go and come, and when other programs want the pointer too: no click is lost, no button stays
// down, and the next hold is a hold.
#include "platform/support/tap_fixture.h"

#include "platform/linux/x11/x11_button_grab.h"

namespace tarvik {
namespace {

const Lines clickAsked = {"down 1 at 300,200", "up 1 at 300,200"};

class X11TapFaults : public X11Tap {
protected:
    void TearDown() override {
        X11Tap::TearDown();
        bringBack("mouse2");
    }

    void setEnabled(const std::string& device, bool enabled) {
        unsigned char value = enabled ? 1 : 0;
        XIChangeProperty(client.display(), deviceId(device), XInternAtom(client.display(), "Device Enabled", False),
                         XInternAtom(client.display(), "INTEGER", False), 8, XIPropModeReplace, &value, 1);
        XSync(client.display(), False);
    }
    void change(const XIAnyHierarchyChangeInfo& info) {
        auto copy = info;
        XIChangeHierarchy(client.display(), &copy, 1);
        XSync(client.display(), False);
    }
    void attach(const std::string& device, const std::string& master) {
        XIAnyHierarchyChangeInfo info = {};
        info.attach = {XIAttachSlave, deviceId(device), deviceId(master)};
        change(info);
    }
    void addPointer() {
        XIAnyHierarchyChangeInfo info = {};
        char name[] = "second";
        info.add = {XIAddMaster, name, True, True};
        change(info);
    }
    void removePointer() {
        XIAnyHierarchyChangeInfo info = {};
        info.remove = {XIRemoveMaster, deviceId("second pointer"), XIAttachToMaster, deviceId("Virtual core pointer"),
                       deviceId("Virtual core keyboard")};
        change(info);
    }

    void detach(const std::string& device) {
        XIAnyHierarchyChangeInfo info = {};
        info.detach = {XIDetachSlave, deviceId(device)};
        change(info);
    }
    void bringBack(const std::string& device) {
        int count = 0;
        auto* info = XIQueryDevice(client.display(), deviceId(device), &count);
        const bool off = info && !info->enabled;
        const bool floating = info && info->use == XIFloatingSlave;
        if (info)
            XIFreeDeviceInfo(info);
        if (off) {
            setEnabled(device, true);
            input(device + " reconnect");
        } else if (floating) {
            attach(device, "Virtual core pointer");
        }
    }

    void expectClick(const std::string& device) {
        input(device + " click 3");
        expectAsked(clickAsked);
        expectSeen({"press 3 at 300,200 " + device, "release 3 at 300,200 " + device});
    }
};

TEST_F(X11TapFaults, aMouseGoesAndComesBack) {
    for (const bool unplugged : {true, false}) {
        const auto leave = [&] { unplugged ? setEnabled("mouse2", false) : detach("mouse2"); };
        expectClick("mouse2");

        leave(); // at rest
        expectClick("mouse");
        bringBack("mouse2");
        expectClick("mouse2");

        input("mouse2 press 3");
        input("mouse2 move 20 0");
        expectAsked({"down 1 at 300,200", "drag 1 at 320,200"});
        leave(); // in a hold
        expectAsked({"lost"});
        input("mouse moveto 300 200");
        expectClick("mouse");
        bringBack("mouse2");
        expectClick("mouse2");

        input("mouse2 press 3");
        leave(); // before it has moved: at first it may look like a click, which the device does not make any more
        EXPECT_THAT(asked(2), testing::ElementsAre(clickAsked[0], testing::AnyOf("lost", clickAsked[1])));
        EXPECT_TRUE(eventually([&] { return log.lines().size() == 2; }));
        expectSeen({});
        expectClick("mouse");
        bringBack("mouse2");
        expectClick("mouse2");
        EXPECT_THAT(log.lines(), testing::Each("hold lost: its mouse has gone"));
        log.clear();
    }
}

TEST_F(X11TapFaults, theMouseOfAnotherHoldGoes) {
    input("mouse press 3");
    input("mouse2 press 1");
    expectAsked({"down 1 at 300,200"});
    setEnabled("mouse2", false);
    input("mouse release 3");
    expectAsked({"up 1 at 300,200"});
    // The server has let go of the other button: a click, from the server's own device.
    const std::string standIn = "Virtual core XTEST pointer";
    expectSeen({rightClick[0], rightClick[1], "press 1 at 300,200 " + standIn, "release 1 at 300,200 " + standIn});
}

TEST_F(X11TapFaults, aSecondPointerComesAndGoes) {
    press = Press::take;
    addPointer();
    attach("mouse2", "second pointer");
    onTap([] {});
    input("mouse2 moveto 400 300");
    input("mouse2 press 3");
    expectAsked({"down 1 at 400,300"});
    removePointer();
    expectAsked({"lost"});
    input("mouse2 release 3");
    input("mouse moveto 300 200");
    for (const char* device : {"mouse2", "mouse"}) {
        input(std::string(device) + " click 3");
        expectAsked(clickAsked);
    }
    expectSeen({});
}

TEST_F(X11TapFaults, anotherProgramHoldsTheButton) {
    tap.stop();
    X11ButtonGrab other(client.display(), DefaultRootWindow(client.display()));
    ASSERT_TRUE(other.grab(3));
    EXPECT_FALSE(start());
    EXPECT_FALSE(start());
    EXPECT_FALSE(tap.installed());
    EXPECT_THAT(log.lines(), testing::ElementsAre("no tap: another program holds the button")) << "once is enough";

    other.release();
    XSync(client.display(), False);
    EXPECT_TRUE(start());
    EXPECT_TRUE(tap.installed());
    expectClick("mouse");

    // It also asks again by itself when it loses the button later on.
    ASSERT_TRUE(other.grab(2));
    onTap([this] { tap.setTriggerButton(TriggerButton::middle); });
    EXPECT_TRUE(eventually([&] { return !tap.installed(); }));
    other.release();
    XSync(client.display(), False);
    EXPECT_TRUE(eventually([&] { return tap.installed(); }));
    EXPECT_TRUE(log.contains("another program holds the button; trying again every second"));
    EXPECT_TRUE(log.contains("event tap has the button again"));
}

/// Another program gets in front of us with a grab of the core protocol, which the server does not tell us of.
TEST_F(X11TapFaults, theButtonComesBackWithTheNextChange) {
    press = Press::take;
    const auto other = X11Connection::open();
    const auto otherGrabs = [&] {
        XGrabButton(other->display(), 3, AnyModifier, other->root(), False, ButtonPressMask, GrabModeAsync,
                    GrabModeAsync, None, None);
        XSync(other->display(), False);
        input("mouse click 3");
        expectAsked({});
    };
    otherGrabs();
    onTap([this] { tap.setTriggerButton(TriggerButton::right); }); // a change of any setting
    onTap([] {});
    input("mouse click 3");
    expectAsked(clickAsked);

    otherGrabs();
    detach("mouse2");
    onTap([] {});
    input("mouse click 3");
    expectAsked(clickAsked);
}

TEST_F(X11TapFaults, theScreenIsLocked) {
    const auto locker = X11Connection::open();
    auto* display = locker->display();
    const auto lock = [&] {
        return XGrabPointer(display, locker->root(), False, ButtonPressMask, GrabModeAsync, GrabModeAsync, None, None,
                            CurrentTime) == GrabSuccess &&
               XGrabKeyboard(display, locker->root(), False, GrabModeAsync, GrabModeAsync, CurrentTime) == GrabSuccess;
    };
    const auto unlock = [&] {
        XUngrabPointer(display, CurrentTime);
        XUngrabKeyboard(display, CurrentTime);
        XSync(display, False);
        locker->discardEvents();
    };
    ASSERT_TRUE(lock());
    input("mouse click 3");
    expectAsked({});
    EXPECT_EQ(XPending(display), 1) << "the press belongs to the locker";
    unlock();
    expectClick("mouse");

    // A locker tries until the button is up, and then has it all.
    press = Press::take;
    input("mouse press 3");
    expectAsked({"down 1 at 300,200"});
    EXPECT_FALSE(lock());
    input("mouse release 3");
    EXPECT_TRUE(eventually(lock));
    expectAsked({"up 1 at 300,200"});
    input("mouse click 3");
    expectAsked({});
    unlock();
    press = Press::giveBack;
    expectClick("mouse");
}

TEST_F(X11TapFaults, anotherProgramTakesTheMouseInAHold) {
    const auto other = X11Connection::open();
    input("mouse press 3");
    expectAsked({"down 1 at 300,200"});
    unsigned char bits[1] = {};
    XIEventMask mask{deviceId("mouse"), sizeof bits, bits};
    ASSERT_EQ(XIGrabDevice(other->display(), mask.deviceid, other->root(), CurrentTime, None, XIGrabModeAsync,
                           XIGrabModeAsync, False, &mask),
              GrabSuccess);
    input("mouse release 3");
    expectAsked({"lost"});
    EXPECT_TRUE(eventually([&] { return client.buttonsDown() == 0; }));
    EXPECT_THAT(log.lines(), testing::ElementsAre("hold lost: another program has taken its mouse"));
    input("mouse2 click 3");
    expectAsked(clickAsked);
    XIUngrabDevice(other->display(), mask.deviceid, CurrentTime);
    XSync(other->display(), False);
    expectSeen({"press 3 at 300,200 mouse2", "release 3 at 300,200 mouse2"});
    expectClick("mouse");
}

} // namespace
} // namespace tarvik
