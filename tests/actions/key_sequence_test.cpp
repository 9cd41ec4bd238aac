#include "actions/key_sequence.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Events = std::vector<KeyEvent>;

TEST(KeySequence, holdsTheModifiersAroundTheKey) {
    const Events expected = {
        {56, true, 0x20000},   {55, true, 0x120000}, {17, true, 0x120000},
        {17, false, 0x120000}, {55, false, 0x20000}, {56, false, 0},
    };
    EXPECT_EQ(keySequence({17, 0x120000}), expected);
}

TEST(KeySequence, pressesAllFourInOneOrder) {
    const Events expected = {
        {59, true, 0x40000},   {58, true, 0xC0000},  {56, true, 0xE0000},  {55, true, 0x1E0000}, {49, true, 0x1E0000},
        {49, false, 0x1E0000}, {55, false, 0xE0000}, {56, false, 0xC0000}, {58, false, 0x40000}, {59, false, 0},
    };
    EXPECT_EQ(keySequence({49, 0x1E0000}), expected);
}

TEST(KeySequence, marksArrowAndFunctionKeysAsAKeyboardDoes) {
    const Events scrollTop = {{55, true, 0x100000}, {126, true, 0xB00000}, {126, false, 0xB00000}, {55, false, 0}};
    EXPECT_EQ(keySequence({126, 0x100000}), scrollTop);
    const Events showDesktop = {{103, true, 0x800000}, {103, false, 0x800000}};
    EXPECT_EQ(keySequence({103, 0}), showDesktop);
    for (const std::uint16_t code : {123, 124, 125, 126})
        EXPECT_EQ(keySequence({code, 0}).front().flags, 0xA00000U) << code;
    for (const std::uint16_t code : {115, 119, 116, 121, 117, 122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111})
        EXPECT_EQ(keySequence({code, 0}).front().flags, 0x800000U) << code;
    EXPECT_EQ(keySequence({36, 0}).front().flags, 0U);
}

TEST(KeySequence, dropsOtherModifierBits) {
    const Events expected = {{17, true, 0}, {17, false, 0}};
    EXPECT_EQ(keySequence({17, 0xA00000 | 0x10000}), expected);
}

} // namespace
} // namespace tarvik
