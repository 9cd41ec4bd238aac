// How key combinations, gestures and bound actions read.
#include "model/gesture.h"
#include "model/key_names.h"
#include "model/vocabulary.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

std::optional<std::string> usLayout(std::uint16_t code) {
    switch (code) {
    case key::t:
        return "T";
    case key::rightBracket:
        return "]";
    case key::grave:
        return "`";
    case 7:
        return "";
    default:
        return std::nullopt;
    }
}

constexpr auto all = flags::control | flags::option | flags::shift | flags::command;

TEST(KeyNames, glyphsStandInOneOrder) {
    const KeyNames names(KeyStyle::glyphs, usLayout);
    EXPECT_EQ(names.displayString({key::space, all}), "⌃⌥⇧⌘Space");
    EXPECT_EQ(names.displayString({key::leftArrow, flags::control}), "⌃←");
    EXPECT_EQ(names.displayString({key::grave, flags::shift | flags::command}), "⇧⌘`");
    EXPECT_EQ(names.displayString({key::f11, flags::secondaryFunction | flags::numericPad}), "F11");
    EXPECT_EQ(names.keyName(key::escape) + names.keyName(key::pageDown) + names.keyName(key::end), "⎋⇟↘");
}

TEST(KeyNames, wordsReadAsLinuxWritesThem) {
    const KeyNames names(KeyStyle::words, usLayout);
    EXPECT_EQ(names.displayString({key::t, flags::control | flags::shift}), "Ctrl+Shift+T");
    EXPECT_EQ(names.displayString({key::pageUp, all}), "Super+Ctrl+Alt+Shift+Page Up");
    EXPECT_EQ(names.displayString({key::command, 0}), "Super");
    EXPECT_EQ(names.keyName(key::forwardDelete), "Delete");
}

TEST(KeyNames, positionsWithoutACharacterShowTheirNumber) {
    const KeyNames names(KeyStyle::glyphs, usLayout);
    EXPECT_EQ(names.keyName(65535), "#65535");
    EXPECT_EQ(names.keyName(200), "#200");
    EXPECT_EQ(names.keyName(7), "#7") << "an empty character is none";
}

TEST(Gesture, arrowsAreSeparatedByBlanks) {
    EXPECT_EQ(Gesture::arrows(""), "");
    EXPECT_EQ(Gesture::arrows("RDL"), "→ ↓ ←");
    EXPECT_EQ(Gesture::arrows("UDX"), "↑ ↓ X");
    EXPECT_EQ(Gesture::arrows("LéR"), "← é →");
}

TEST(Gesture, titlesNameTheAction) {
    const KeyNames names(KeyStyle::glyphs, usLayout);
    const auto title = [&](const GestureAction& action) { return Gesture::title(action, macosVocabulary(), names); };
    const KeyShortcut commandT{key::t, flags::command};
    EXPECT_EQ(title({ActionKind::custom, {}}), "Custom (unset)");
    EXPECT_EQ(title({ActionKind::custom, commandT}), "Shortcut ⌘T");
    EXPECT_EQ(title({ActionKind::nextTab, commandT}), "Next Tab");
    EXPECT_NE((GestureAction{ActionKind::nextTab, commandT}), (GestureAction{ActionKind::nextTab, {}}));
}

} // namespace
} // namespace tarvik
