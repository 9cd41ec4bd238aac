#include "engine/stroke_recognizer.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>

namespace tarvik {
namespace {

StrokeRecognizer fed(std::initializer_list<Point> points, double minSegment = 30) {
    StrokeRecognizer recognizer{minSegment, {0, 0}, {}};
    for (const auto p : points)
        recognizer.add(p);
    return recognizer;
}

TEST(StrokeRecognizer, needsTheMinimumDistanceFromItsAnchor) {
    EXPECT_EQ(fed({{29, 0}}).anchor, (Point{0, 0}));
    EXPECT_EQ(fed({{29, 0}}).directions, "");
    const auto slow = fed({{29, 0}, {31, 0}});
    EXPECT_EQ(slow.directions, "R");
    EXPECT_EQ(slow.anchor, (Point{31, 0}));
    EXPECT_EQ(fed({{30, 0}}).directions, "R") << "the minimum itself is enough";
    EXPECT_EQ(fed({{12.3, 0}}, 12.3).directions, "R");
}

TEST(StrokeRecognizer, needsADominantAxis) {
    EXPECT_EQ(fed({{30, 21}}).directions, "R");
    EXPECT_EQ(fed({{30, 22}}).directions, "");
    EXPECT_EQ(fed({{30, 22}}).anchor, (Point{0, 0}));
    EXPECT_EQ(fed({{50, 70}}).directions, "D") << "50 x 1.4 = 70 just passes";
    EXPECT_EQ(fed({{50, 50}}).directions, "");
}

TEST(StrokeRecognizer, namesTheFourDirections) {
    EXPECT_EQ(fed({{40, 0}, {40, 40}, {0, 40}, {0, 0}}).directions, "RDLU");
    EXPECT_EQ(fed({{40, 0}, {80, 0}, {120, 0}}).directions, "R");
    EXPECT_EQ(fed({{40, 0}, {80, 0}, {80, 40}, {120, 40}}).directions, "RDR");
}

TEST(StrokeRecognizer, stopsAtSixLettersButGoesOnFollowing) {
    const auto full = fed({{40, 0}, {40, 40}, {80, 40}, {80, 80}, {120, 80}, {120, 120}, {80, 120}});
    EXPECT_EQ(full.directions, "RDRDRD");
    EXPECT_EQ(full.anchor, (Point{80, 120}));
}

TEST(StrokeRecognizer, treatsAZeroComponentAsNegativeAndIgnoresNonsense) {
    EXPECT_EQ(fed({{0, 0}}, 0).directions, "U");
    constexpr auto nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(fed({{nan, 0}, {0, nan}, {nan, nan}, {100, nan}, {nan, 100}}).directions, "");
    EXPECT_EQ(fed({{nan, 0}}, 0).anchor, (Point{0, 0}));
    EXPECT_EQ(fed({{10, 0}}, nan).directions, "R") << "a minimum that is no number holds nothing back";
}

} // namespace
} // namespace tarvik
