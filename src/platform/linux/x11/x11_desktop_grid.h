// Where the virtual desktops lie beside each other.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvik {

/// _NET_DESKTOP_LAYOUT: how a pager arranges the desktops.
struct DesktopLayout {
    /// The desktops are counted down the columns instead of along the rows.
    bool vertical = false;
    /// 0 where it follows from the other one and the number of desktops.
    std::uint32_t columns = 0;
    std::uint32_t rows = 1;
    /// Where desktop 0 lies.
    bool startsRight = false;
    bool startsBottom = false;
};

/// From the items of the property: orientation, columns, rows and, where given, the starting corner. Nothing when they
/// make no sense.
std::optional<DesktopLayout> desktopLayoutFrom(const std::vector<unsigned long>& items);

/// The desktop to the left (`step` -1) or right (+1) of `current`; nothing at the edge. Without a layout the desktops
/// lie in one row. In a single column "left" and "right" mean the previous and the next one, or they would mean
/// nothing.
std::optional<std::uint32_t> neighbourDesktop(std::uint32_t current, std::uint32_t count, int step,
                                              const std::optional<DesktopLayout>& layout);

} // namespace tarvik
