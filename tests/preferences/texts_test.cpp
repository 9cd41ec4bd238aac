// What the window's texts and colours are made of.
#include "preferences/view/look_view.h"
#include "preferences/view/texts.h"
#include "preferences/view/updater_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tarvik {
namespace {

TEST(VersionText, WhatIsUnknownIsAQuestionMark) {
    EXPECT_EQ(versionText("1.2", "34"), "Version 1.2 (34)");
    EXPECT_EQ(versionText("2.0", nullptr), "Version 2.0 (?)");
    EXPECT_EQ(versionText("", ""), "Version ? (?)");
}

TEST(LastChecked, IsAnAbbreviatedDateAndAShortTime) {
    setenv("TZ", "UTC", 1);
    const auto date = std::chrono::system_clock::from_time_t(1'795'363'500); // 2026-11-22 16:05
    EXPECT_EQ(lastCheckedText(date, QLocale("en_US")), "Nov 22, 2026, 4:05 PM");
    EXPECT_EQ(lastCheckedText(date, QLocale("de_DE")), "22. Nov. 2026, 16:05");
    EXPECT_EQ(lastCheckedText(std::nullopt, QLocale("en_US")), "Never");
}

/// Contrast ratio of WCAG 2.1, written down a second time.
double contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& color) {
        double sum = 0;
        const std::pair<double, double> channels[] = {
            {color.redF(), 0.2126}, {color.greenF(), 0.7152}, {color.blueF(), 0.0722}};
        for (const auto& [value, weight] : channels)
            sum += weight * (value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
        return sum;
    };
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

TEST(ReadableOn, EveryAccentCanBeReadOnEveryGround) {
    for (const auto* ground : {"#ffffff", "#f3f3f5", "#2e2e32", "#000000", "#808080"}) {
        for (const auto* accent : {"#3584e4", "#ffd700", "#202020", "#ff0000", "#ffffff", "#00ff88"})
            EXPECT_GE(contrast(readableOn(QColor(accent), QColor(ground)), QColor(ground)), 4.5)
                << accent << " on " << ground;
    }
    EXPECT_EQ(readableOn(QColor("#202020"), QColor("#ffffff")), QColor("#202020"));
}

} // namespace
} // namespace tarvik
