// Layout and key posting, with the keyboard that the test's desktop was made with.
#include <gmock/gmock.h> // before Xlib, whose macros it does not survive

#include "platform/linux/x11/x11_key_poster.h"
#include "platform/linux/x11/x11_keyboard_layout.h"

#include "actions/key_sequence.h"
#include "fakes/recording_log.h"
#include "model/key_shortcut.h"
#include "platform/support/desktop_input.h"
#include "platform/support/eventually.h"
#include "platform/support/x_client.h"

#include <linux/input-event-codes.h>

#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <cstdlib>

namespace tarvik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class X11Keys : public testing::Test {
protected:
    void SetUp() override { client.open(); }

    void post(const KeyShortcut& shortcut) { poster.post(keySequence(shortcut)); }

    bool isDown(int evdev) {
        char keys[32];
        XQueryKeymap(x->display(), keys);
        const int code = evdev + 8;
        return keys[code / 8] >> code % 8 & 1;
    }

    RecordingLog log;
    XClient client;
    DesktopInput input;
    std::unique_ptr<X11Connection> x = X11Connection::open();
    X11KeyPoster poster{*x, log};
    X11KeyboardLayout layout{log};
};

// The first test runs before anything was typed, when the session's keyboard still has no layout of the user's.
TEST_F(X11Keys, lettersArriveAsThemselvesInEveryLayout) {
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const auto position = layout.positionOf(letter);
        ASSERT_TRUE(position) << letter;
        post({*position, flags::control});
        EXPECT_THAT(client.keys(4),
                    ElementsAre(KeySeen{true, XK_Control_L, 0}, KeySeen{true, KeySym(letter), ControlMask},
                                KeySeen{false, KeySym(letter), ControlMask}, KeySeen{false, XK_Control_L, ControlMask}))
            << letter;
        EXPECT_EQ(layout.character(*position), std::string(1, static_cast<char>(letter - 'a' + 'A')));
    }
}

TEST_F(X11Keys, allFourModifiersAndSpecialKeys) {
    post({key::leftArrow, flags::control | flags::shift | flags::option | flags::command});
    const auto seen = client.keys(10);
    ASSERT_EQ(seen.size(), 10U);
    EXPECT_EQ(seen[4], (KeySeen{true, XK_Left, ControlMask | ShiftMask | Mod1Mask | Mod4Mask}));
    EXPECT_EQ(seen[9].state, ControlMask);
    post({key::f11, 0});
    EXPECT_THAT(client.keys(2), ElementsAre(KeySeen{true, XK_F11, 0}, KeySeen{false, XK_F11, 0}));
}

TEST_F(X11Keys, heldModifiersTakeNoPartAndAreBackAfterwards) {
    input("keyboard press " + std::to_string(KEY_LEFTALT));
    ASSERT_EQ(client.keys(1).size(), 1U);
    post({key::f11, 0});
    EXPECT_THAT(client.keys(4), ElementsAre(KeySeen{false, XK_Alt_L, Mod1Mask}, KeySeen{true, XK_F11, 0},
                                            KeySeen{false, XK_F11, 0}, KeySeen{true, XK_Alt_L, 0}));
    EXPECT_TRUE(isDown(KEY_LEFTALT));
    input("keyboard release " + std::to_string(KEY_LEFTALT));
    EXPECT_THAT(client.keys(1), ElementsAre(KeySeen{false, XK_Alt_L, Mod1Mask}));
    EXPECT_FALSE(isDown(KEY_LEFTALT));
}

TEST_F(X11Keys, aModifierBothHeldAndPostedIsHeldAfterwards) {
    input("keyboard press " + std::to_string(KEY_LEFTCTRL));
    ASSERT_EQ(client.keys(1).size(), 1U);
    post({key::home, flags::control});
    const auto seen = client.keys(6);
    ASSERT_EQ(seen.size(), 6U);
    EXPECT_EQ(seen[2], (KeySeen{true, XK_Home, ControlMask}));
    EXPECT_TRUE(isDown(KEY_LEFTCTRL));
    input("keyboard release " + std::to_string(KEY_LEFTCTRL));
    EXPECT_TRUE(eventually([&] { return !isDown(KEY_LEFTCTRL); }));
}

TEST_F(X11Keys, modifiersHeldByAnotherProgramAreLiftedToo) {
    const auto shift = XKeysymToKeycode(client.connection().display(), XK_Shift_L);
    XTestFakeKeyEvent(client.connection().display(), shift, True, CurrentTime);
    ASSERT_EQ(client.keys(1).size(), 1U);
    post({key::f11, 0});
    EXPECT_THAT(client.keys(4), ElementsAre(KeySeen{false, XK_Shift_L, ShiftMask}, KeySeen{true, XK_F11, 0},
                                            KeySeen{false, XK_F11, 0}, KeySeen{true, XK_Shift_L, 0}));
    XTestFakeKeyEvent(client.connection().display(), shift, False, CurrentTime);
    EXPECT_EQ(client.keys(1).size(), 1U);
}

TEST_F(X11Keys, capsLockIsLeftAlone) {
    input("keyboard press " + std::to_string(KEY_CAPSLOCK));
    ASSERT_EQ(client.keys(1).size(), 1U);
    post({key::f11, 0});
    EXPECT_THAT(client.keys(2), ElementsAre(KeySeen{true, XK_F11, 0}, KeySeen{false, XK_F11, 0}));
    input("keyboard release " + std::to_string(KEY_CAPSLOCK));
    input("keyboard tap " + std::to_string(KEY_CAPSLOCK));
    EXPECT_EQ(client.keys(3).size(), 3U);
}

// The finger leaves the key at any moment of the sequence; the key must never stay down.
TEST_F(X11Keys, aModifierReleasedMeanwhileIsNeverStuck) {
    for (int round = 0; round < 300; ++round) {
        input("keyboard press " + std::to_string(KEY_LEFTALT));
        std::thread finger([&] {
            std::this_thread::sleep_for(std::chrono::microseconds(round * 7));
            input("keyboard release " + std::to_string(KEY_LEFTALT));
        });
        post({key::f11, 0});
        finger.join();
        ASSERT_TRUE(eventually([&] { return !isDown(KEY_LEFTALT); })) << "round " << round;
        client.keys(0);
    }
}

TEST_F(X11Keys, unknownCodesAreSkippedAndLoggedOnce) {
    for (int i = 0; i < 2; ++i)
        poster.post({{999, true, 0}, {key::f11, true, 0}, {999, false, 0}, {key::f11, false, 0}});
    EXPECT_EQ(client.keys(4).size(), 4U);
    EXPECT_THAT(log.lines(), ElementsAre("no key with code 999 on this system"));
}

TEST_F(X11Keys, layoutFollowsTheUser) {
    int changes = 0;
    ASSERT_EQ(std::system("setxkbmap us"), 0);
    ASSERT_TRUE(eventually([&] { return layout.character(12) == "Q"; }));
    X11KeyboardLayout watched(log, [&] { ++changes; });
    ASSERT_EQ(std::system("setxkbmap 'fr,ru,us(intl)'"), 0);
    ASSERT_TRUE(eventually([&] { return watched.character(12) == "A"; }));
    EXPECT_EQ(watched.positionOf('w'), 6);
    EXPECT_EQ(watched.character(33), "^"); // a dead key
    EXPECT_EQ(watched.character(10), "<");
    EXPECT_EQ(watched.character(18), "&");
    EXPECT_EQ(watched.character(83), "1"); // keypad
    EXPECT_EQ(watched.character(96), std::nullopt);
    EXPECT_EQ(changes, 1);

    XkbLockGroup(client.connection().display(), XkbUseCoreKbd, 1);
    XSync(client.connection().display(), False);
    ASSERT_TRUE(eventually([&] { return watched.character(12) == "Й"; }));
    EXPECT_EQ(watched.positionOf('w'), std::nullopt);
    EXPECT_EQ(changes, 2);

    XkbLockGroup(client.connection().display(), XkbUseCoreKbd, 2);
    XSync(client.connection().display(), False);
    ASSERT_TRUE(eventually([&] { return watched.positionOf('w') == 13; }));
    EXPECT_EQ(watched.character(39), "´");

    XkbLockGroup(client.connection().display(), XkbUseCoreKbd, 0);
    XSync(client.connection().display(), False);
    ASSERT_TRUE(eventually([&] { return watched.positionOf('w') == 6; }));
    post({6, flags::control});
    const auto seen = client.keys(4);
    ASSERT_EQ(seen.size(), 4U);
    EXPECT_EQ(seen[1], (KeySeen{true, XK_w, ControlMask}));
    EXPECT_EQ(changes, 4) << "posting keys is no change of the layout";
}

} // namespace
} // namespace tarvik
