#include "platform/linux/x11/x11_desktop_grid.h"

namespace tarvik {
namespace {

constexpr unsigned long maxLines = 10'000;

struct Grid {
    std::int64_t columns = 0;
    std::int64_t rows = 0;
};

Grid gridOf(const DesktopLayout& layout, std::int64_t count) {
    Grid grid{layout.columns, layout.rows};
    if (grid.columns == 0)
        grid.columns = (count + grid.rows - 1) / grid.rows;
    if (grid.rows == 0)
        grid.rows = (count + grid.columns - 1) / grid.columns;
    return grid;
}

} // namespace

std::optional<DesktopLayout> desktopLayoutFrom(const std::vector<unsigned long>& items) {
    if (items.size() < 3 || items[0] > 1 || items[1] > maxLines || items[2] > maxLines || items[1] + items[2] == 0)
        return std::nullopt;
    DesktopLayout layout;
    layout.vertical = items[0] == 1;
    layout.columns = static_cast<std::uint32_t>(items[1]);
    layout.rows = static_cast<std::uint32_t>(items[2]);
    const auto corner = items.size() > 3 ? items[3] : 0; // clockwise from the top left
    layout.startsRight = corner == 1 || corner == 2;
    layout.startsBottom = corner == 2 || corner == 3;
    return layout;
}

std::optional<std::uint32_t> neighbourDesktop(std::uint32_t current, std::uint32_t count, int step,
                                              const std::optional<DesktopLayout>& layout) {
    if (current >= count)
        return std::nullopt;
    const auto shape = layout.value_or(DesktopLayout{});
    const auto [columns, rows] = gridOf(shape, count);
    std::int64_t target = 0;
    if (columns <= 1) {
        target = std::int64_t{current} + (shape.startsBottom ? -step : step);
    } else {
        const std::int64_t column = shape.vertical ? current / rows : current % columns;
        const std::int64_t next = column + (shape.startsRight ? -step : step);
        if (next < 0 || next >= columns)
            return std::nullopt;
        target = current + (next - column) * (shape.vertical ? rows : 1);
    }
    if (target < 0 || target >= count)
        return std::nullopt;
    return static_cast<std::uint32_t>(target);
}

} // namespace tarvik
