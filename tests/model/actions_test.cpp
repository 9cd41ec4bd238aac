// The catalogue of actions, and the two platforms' tables for it.
#include "model/vocabulary.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace tarvik {
namespace {

using enum ActionKind;

TEST(ActionKind, rawValuesNameEveryKindOnce) {
    for (const auto kind : allActionKinds())
        EXPECT_EQ(actionKindFromRawValue(rawValue(kind)), kind) << rawValue(kind);
    EXPECT_EQ(rawValue(none), "none");
    EXPECT_EQ(rawValue(exitFullScreen), "exitFullScreen");
    EXPECT_EQ(rawValue(custom), "custom");
    EXPECT_EQ(actionKindFromRawValue("Back"), std::nullopt);
    EXPECT_EQ(actionKindFromRawValue(""), std::nullopt);
}

TEST(ActionKind, sectionsHaveTheirMembers) {
    std::vector<std::pair<std::string, int>> sections;
    for (const auto kind : allActionKinds()) {
        const std::string title(sectionTitle(kind));
        if (sections.empty() || sections.back().first != title)
            sections.emplace_back(title, 0);
        ++sections.back().second;
    }
    const std::vector<std::pair<std::string, int>> expected = {
        {"", 1}, {"Desktops", 6}, {"Tabs", 5}, {"Windows & Apps", 10}, {"Navigation", 5}, {"Custom", 1}};
    EXPECT_EQ(sections, expected);
}

TEST(Vocabulary, everyRowStandsAtItsKind) {
    for (const auto* vocabulary : {&macosVocabulary(), &linuxVocabulary()}) {
        for (const auto kind : allActionKinds()) {
            const auto& row = (*vocabulary)[kind];
            EXPECT_EQ(row.kind, kind) << rawValue(kind);
            EXPECT_FALSE(row.title.empty()) << rawValue(kind);
            EXPECT_EQ(row.shortcut.has_value() && row.route == Route::shell, false) << rawValue(kind);
            if (row.route == Route::keys)
                EXPECT_TRUE(row.shortcut) << rawValue(kind);
        }
    }
}

TEST(Vocabulary, macosShortcutsAreThoseOfItsApplications) {
    constexpr std::uint64_t shiftCommand = 0x120000;
    constexpr std::uint64_t command = 0x100000;
    const std::map<ActionKind, KeyShortcut> expected = {
        {spaceLeft, {123, 0x40000}},
        {spaceRight, {124, 0x40000}},
        {nextTab, {30, shiftCommand}},
        {previousTab, {33, shiftCommand}},
        {newTab, {17, command}},
        {closeTab, {13, command}},
        {reopenTab, {17, shiftCommand}},
        {nextWindow, {50, command}},
        {previousWindow, {50, shiftCommand}},
        {previousApp, {48, command}},
        {closeWindow, {13, shiftCommand}},
        {minimizeWindow, {46, command}},
        {fullScreen, {3, 0x140000}},
        {hideApp, {4, command}},
        {quitApp, {12, command}},
        {back, {33, command}},
        {forward, {30, command}},
        {reload, {15, command}},
        {scrollTop, {126, command}},
        {scrollBottom, {125, command}},
    };
    for (const auto kind : allActionKinds()) {
        const auto& shortcut = macosVocabulary()[kind].shortcut;
        const auto row = expected.find(kind);
        ASSERT_EQ(shortcut.has_value(), row != expected.end()) << rawValue(kind);
        if (shortcut)
            EXPECT_EQ(shortcut->shortcut, row->second) << rawValue(kind);
    }
}

TEST(Vocabulary, titlesFollowThePlatform) {
    EXPECT_EQ(macosVocabulary()[appExpose].title, "App Windows (Exposé)");
    EXPECT_EQ(linuxVocabulary()[appExpose].title, "App Windows");
    EXPECT_EQ(linuxVocabulary()[missionControl].title, "Overview");
    EXPECT_EQ(linuxVocabulary()[launchpad].title, "Applications");
    EXPECT_EQ(linuxVocabulary()[custom].title, "Custom Shortcut…");
}

} // namespace
} // namespace tarvik
