#include "platform/linux/common/key_codes.h"
#include "platform/linux/x11/key_characters.h"

#include "model/key_shortcut.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <set>

namespace tarvik {
namespace {

TEST(KeyCodes, bothDirectionsAgreeAndNoKeyStandsTwice) {
    std::set<std::uint16_t> evdev;
    for (const auto code : allKeyCodes()) {
        const auto other = evdevFromKeyCode(code);
        ASSERT_TRUE(other);
        EXPECT_EQ(keyCodeFromEvdev(*other), code);
        EXPECT_TRUE(evdev.insert(*other).second) << code;
    }
}

TEST(KeyCodes, everyPositionThatKeyboardsHave) {
    std::vector<int> missing;
    for (std::uint16_t code = 0; code <= key::upArrow; ++code) {
        if (!evdevFromKeyCode(code))
            missing.push_back(code);
    }
    EXPECT_THAT(missing, testing::ElementsAre(52, 66, 68, 70, 77, 108, 112)); // given to no key
}

TEST(KeyCodes, thePositionsOfTheModelAreTheNamedKeys) {
    EXPECT_EQ(evdevFromKeyCode(key::w), KEY_W);
    EXPECT_EQ(evdevFromKeyCode(key::grave), KEY_GRAVE);
    EXPECT_EQ(evdevFromKeyCode(10), KEY_102ND);
    EXPECT_EQ(evdevFromKeyCode(key::rightBracket), KEY_RIGHTBRACE);
    EXPECT_EQ(evdevFromKeyCode(key::returnKey), KEY_ENTER);
    EXPECT_EQ(evdevFromKeyCode(key::f4), KEY_F4);
    EXPECT_EQ(evdevFromKeyCode(key::pageDown), KEY_PAGEDOWN);
    EXPECT_EQ(evdevFromKeyCode(key::forwardDelete), KEY_DELETE);
    EXPECT_EQ(evdevFromKeyCode(key::upArrow), KEY_UP);
    EXPECT_EQ(evdevFromKeyCode(key::command), KEY_LEFTMETA);
    EXPECT_EQ(evdevFromKeyCode(key::option), KEY_LEFTALT);
    EXPECT_EQ(evdevFromKeyCode(999), std::nullopt);
    EXPECT_EQ(keyCodeFromEvdev(KEY_SYSRQ), std::nullopt);
}

TEST(KeyCodes, theServerHasNoRoomForTheKernelsHighCodes) {
    EXPECT_EQ(xKeyCodeFromEvdev(KEY_W), 25);
    EXPECT_EQ(xKeyCodeFromEvdev(247), 255);
    EXPECT_EQ(xKeyCodeFromEvdev(248), std::nullopt);
    EXPECT_EQ(xKeyCodeFromEvdev(KEY_FN), std::nullopt);
}

TEST(KeyCharacters, printableUpperCasedDeadKeysByTheirAccent) {
    EXPECT_EQ(characterOf(XKB_KEY_w), "W");
    EXPECT_EQ(characterOf(XKB_KEY_odiaeresis), "Ö");
    EXPECT_EQ(characterOf(XKB_KEY_Cyrillic_shorti), "Й");
    EXPECT_EQ(characterOf(XKB_KEY_dead_circumflex), "^");
    EXPECT_EQ(characterOf(XKB_KEY_KP_7), "7");
    for (const auto symbol : {XKB_KEY_F5, XKB_KEY_Return, XKB_KEY_Escape, XKB_KEY_BackSpace, XKB_KEY_Shift_L,
                              XKB_KEY_NoSymbol, XKB_KEY_Multi_key, 0x100DA00 /* half a character */})
        EXPECT_EQ(characterOf(static_cast<xkb_keysym_t>(symbol)), std::nullopt) << symbol;
}

} // namespace
} // namespace tarvik
