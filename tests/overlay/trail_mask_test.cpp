#include "overlay/trail_mask.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarvik {
namespace {

std::uint32_t alphaOf(std::uint32_t argb) { return argb >> 24; }

TEST(TrailMask, LineIsFivePointsWideWithRoundCaps) {
    for (const int scale : {1, 2}) {
        TrailMask mask(200 * scale, 100 * scale, scale);
        mask.stroke({50.0 * scale, 50.0 * scale}, {150.0 * scale, 50.0 * scale});
        int solid = 0;
        for (int y = 0; y < 100 * scale; ++y)
            solid += mask.row(y)[100 * scale] >= TrailMask::halfLevel;
        EXPECT_NEAR(solid, 5 * scale, 1);
        // The cap ends half a line width before the first point, and has no corners.
        EXPECT_GE(mask.row(50 * scale)[48 * scale], TrailMask::halfLevel);
        EXPECT_LT(mask.row(50 * scale)[47 * scale - 1], TrailMask::edgeLevel);
        EXPECT_LT(mask.row(48 * scale)[48 * scale - 1], TrailMask::halfLevel);
        EXPECT_EQ(mask.row(50 * scale)[20 * scale], 0);
    }
}

TEST(TrailMask, JointsAndCrossingsAreNoDarkerThanTheLine) {
    TrailMask bent(100, 100, 1);
    bent.stroke({20, 20}, {60, 20});
    bent.stroke({60, 20}, {60, 60});
    bent.stroke({60, 60}, {30, 5});
    TrailMask again = TrailMask(100, 100, 1);
    for (int i = 0; i < 3; ++i) {
        again.stroke({20, 20}, {60, 20});
        again.stroke({60, 20}, {60, 60});
        again.stroke({60, 60}, {30, 5});
    }
    const TrailColours colours = trailColours(0x3366CC, 1);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            EXPECT_EQ(bent.row(y)[x], again.row(y)[x]);
            EXPECT_LE(alphaOf(colours[bent.row(y)[x]]), alphaOf(colours[TrailMask::fullLevel]));
        }
    }
    EXPECT_EQ(bent.row(20)[60], TrailMask::fullLevel);
}

TEST(TrailMask, ChangedRectanglesHoldEveryChangeAndHugTheLine) {
    TrailMask mask(2000, 1000, 1);
    const auto changed = mask.stroke({30, 40}, {1900, 900});
    long area = 0;
    for (const PixelRect& rect : changed) {
        area += static_cast<long>(rect.width) * rect.height;
        EXPECT_EQ(rect.intersected(mask.bounds()), rect);
    }
    EXPECT_LT(area, 2000 * 1000 / 5);
    for (int y = 0; y < 1000; ++y) {
        for (int x = 0; x < 2000; ++x) {
            if (mask.row(y)[x] == 0)
                continue;
            bool inside = false;
            for (const PixelRect& rect : changed)
                inside |= rect.intersects({x, y, 1, 1});
            ASSERT_TRUE(inside) << x << ", " << y;
        }
    }
}

TEST(TrailMask, SegmentsOutsideThePanelCostNothingAndDrawOnlyWhatReachesIn) {
    TrailMask mask(100, 100, 1);
    EXPECT_TRUE(mask.stroke({200, 10}, {300, 90}).empty());
    EXPECT_TRUE(mask.stroke({10, std::nan("")}, {20, 20}).empty());
    const auto changed = mask.stroke({-1e9, 50}, {1e9, 50});
    EXPECT_LT(changed.size(), 10u);
    EXPECT_EQ(mask.row(50)[0], TrailMask::fullLevel);
    EXPECT_EQ(mask.row(50)[99], TrailMask::fullLevel);
    TrailMask nothing(0, 0, 1);
    EXPECT_TRUE(nothing.stroke({0, 0}, {10, 10}).empty());
}

TEST(TrailMask, RunsCoverTheLineWithoutItsShadow) {
    TrailMask mask(100, 60, 1);
    mask.stroke({20, 30.5}, {80, 30.5});
    const auto runs = mask.runs(mask.bounds());
    ASSERT_EQ(runs.size(), 5u);
    EXPECT_EQ(runs[2].y, 30);
    EXPECT_EQ(runs[2].x, 18);
    EXPECT_EQ(runs[2].right(), 82);
    EXPECT_EQ(mask.runs({40, 30, 10, 1}), (std::vector<PixelRect>{{40, 30, 10, 1}}));
}

TEST(TrailColours, FadeFromTheLineThroughTheShadowToNothing) {
    const TrailColours colours = trailColours(0xFF8000, 1);
    EXPECT_EQ(colours[0], 0u);
    EXPECT_EQ(colours[TrailMask::edgeLevel] & 0xFFFFFF, 0u);
    EXPECT_NEAR(alphaOf(colours[TrailMask::edgeLevel]), 0.35 * 0.45 * 255, 12);
    EXPECT_NEAR(colours[TrailMask::fullLevel] >> 16 & 0xFF, 0.85 * 255, 1);
    EXPECT_EQ(colours[TrailMask::fullLevel] & 0xFF, 0u);
    for (unsigned level = 1; level < colours.size(); ++level)
        EXPECT_GE(alphaOf(colours[level]), alphaOf(colours[level - 1]));
    EXPECT_LE(alphaOf(colours[1]), 1u);
}

} // namespace
} // namespace tarvik
