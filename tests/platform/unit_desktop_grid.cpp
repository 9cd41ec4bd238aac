#include "platform/linux/x11/x11_desktop_grid.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

constexpr int left = -1;
constexpr int right = 1;

std::optional<std::uint32_t> neighbour(std::uint32_t current, std::uint32_t count, int step,
                                       const std::vector<unsigned long>& layout = {}) {
    return neighbourDesktop(current, count, step, desktopLayoutFrom(layout));
}

TEST(DesktopGrid, withoutALayoutOneRow) {
    EXPECT_EQ(neighbour(1, 4, left), 0U);
    EXPECT_EQ(neighbour(1, 4, right), 2U);
    EXPECT_EQ(neighbour(0, 4, left), std::nullopt);
    EXPECT_EQ(neighbour(3, 4, right), std::nullopt);
    EXPECT_EQ(neighbour(0, 1, right), std::nullopt);
    EXPECT_EQ(neighbour(7, 4, left), std::nullopt);
}

TEST(DesktopGrid, rowsColumnsAndCorners) {
    // 0 1 2
    // 3 4
    const std::vector<unsigned long> rows = {0, 3, 2, 0};
    EXPECT_EQ(neighbour(1, 5, right, rows), 2U);
    EXPECT_EQ(neighbour(2, 5, right, rows), std::nullopt);
    EXPECT_EQ(neighbour(3, 5, left, rows), std::nullopt);
    EXPECT_EQ(neighbour(4, 5, right, rows), std::nullopt) << "an empty place";
    EXPECT_EQ(neighbour(4, 5, right, {0, 3, 0}), std::nullopt) << "rows that follow from the columns";
    // 0 2 4
    // 1 3
    const std::vector<unsigned long> columns = {1, 0, 2, 0};
    EXPECT_EQ(neighbour(0, 5, right, columns), 2U);
    EXPECT_EQ(neighbour(3, 5, left, columns), 1U);
    EXPECT_EQ(neighbour(3, 5, right, columns), std::nullopt);
    // 1 0
    // 3 2
    EXPECT_EQ(neighbour(0, 4, left, {0, 2, 2, 1}), 1U);
    EXPECT_EQ(neighbour(3, 4, right, {0, 2, 2, 2}), 2U);
}

TEST(DesktopGrid, aSingleColumnIsWalkedUpAndDown) {
    EXPECT_EQ(neighbour(1, 4, left, {1, 1, 4, 0}), 0U);
    EXPECT_EQ(neighbour(1, 4, right, {0, 1, 0, 0}), 2U);
    EXPECT_EQ(neighbour(1, 4, left, {0, 1, 4, 3}), 2U) << "counted from the bottom";
}

TEST(DesktopGrid, aLayoutWithoutSenseIsNone) {
    EXPECT_EQ(desktopLayoutFrom({0, 0, 0}), std::nullopt);
    EXPECT_EQ(desktopLayoutFrom({5, 1, 1}), std::nullopt);
    EXPECT_EQ(desktopLayoutFrom({0, 1}), std::nullopt);
    EXPECT_EQ(desktopLayoutFrom({0, 0xFFFFFFFF, 1}), std::nullopt);
    EXPECT_EQ(neighbour(1, 6, right, {0, 2, 1}), std::nullopt) << "more desktops than places";
}

} // namespace
} // namespace tarvik
