#include "overlay/trail_geometry.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr Size panel{1000, 800};
constexpr Size pill{124, 32};

TEST(TrailGeometry, PillLeavesRoomAroundItsText) {
    EXPECT_EQ(pillSize({100, 18}), (Size{124, 32}));
    EXPECT_EQ(pillSize({0, 18}), (Size{24, 32}));
    EXPECT_EQ(pillTextOrigin(), (Point{12, 7}));
}

TEST(TrailGeometry, PillStandsRightOfAndBelowThePointer) {
    EXPECT_EQ(pillFrame(pill, {400, 300}, panel), (Rect{418, 318, 124, 32}));
}

TEST(TrailGeometry, PillStaysInsideTheEdges) {
    EXPECT_EQ(pillFrame(pill, {-50, -50}, panel), (Rect{8, 8, 124, 32}));
    EXPECT_EQ(pillFrame(pill, {0, 0}, panel), (Rect{18, 18, 124, 32}));
    EXPECT_EQ(pillFrame(pill, {999, 799}, panel), (Rect{1000 - 124 - 8, 800 - 32 - 8, 124, 32}));
}

TEST(TrailGeometry, PillTooLargeForThePanelKeepsToTheTopRight) {
    EXPECT_EQ(pillFrame(pill, {50, 10}, {100, 30}), (Rect{100 - 124 - 8, 8, 124, 32}));
}

} // namespace
} // namespace tarvik
