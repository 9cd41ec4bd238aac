#include "overlay/trail_shape.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik {
namespace {

TEST(TrailShape, KeepsALineAsItIsWhileItsRectanglesAreFew) {
    TrailShape shape(10);
    EXPECT_EQ(shape.add({{5, 3, 4, 1}, {5, 4, 4, 1}}).rects, (std::vector<PixelRect>{{5, 3, 4, 1}, {5, 4, 4, 1}}));
    EXPECT_EQ(shape.rectCount(), 1u); // equal rows are one rectangle
    EXPECT_TRUE(shape.add({{6, 3, 2, 1}}).rects.empty());
    EXPECT_EQ(shape.add({{9, 3, 2, 1}, {20, 3, 5, 1}}).rects, (std::vector<PixelRect>{{5, 3, 6, 1}, {20, 3, 5, 1}}));
    EXPECT_EQ(shape.rectCount(), 3u);
}

/// Every pixel that was added is covered, and what stands for it is the same whether one follows the changes or the
/// count; from one line across the screen to one that fills it.
TEST(TrailShape, CoversEverythingWithFewRectanglesHoweverMuchIsAdded) {
    constexpr int width = 400;
    constexpr int height = 300;
    constexpr std::size_t most = 50;
    TrailShape shape(most);
    std::vector<bool> wanted(width * height);
    std::vector<bool> covered(width * height);
    std::mt19937 random(1);
    bool simplified = false;
    for (int i = 0; i < 2000; ++i) {
        const int x = static_cast<int>(random() % (width - 8));
        const int y = static_cast<int>(random() % height);
        std::fill_n(wanted.begin() + y * width + x, 8, true);
        const auto change = shape.add({{x, y, 8, 1}});
        if (change.simplified)
            covered.assign(covered.size(), false);
        simplified |= change.simplified;
        for (const PixelRect& rect : change.rects) {
            const PixelRect inside = rect.intersected({0, 0, width, height});
            for (int row = inside.y; row < inside.bottom(); ++row)
                std::fill_n(covered.begin() + row * width + inside.x, inside.width, true);
        }
        ASSERT_LE(shape.rectCount(), most);
        if (i == 20) { // still sharp
            ASSERT_FALSE(simplified);
            ASSERT_EQ(covered, wanted);
        }
    }
    EXPECT_TRUE(simplified);
    for (std::size_t i = 0; i < wanted.size(); ++i)
        ASSERT_TRUE(covered[i] || !wanted[i]) << i;
}

} // namespace
} // namespace tarvik
