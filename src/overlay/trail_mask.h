// The line of the trail as an image of distances, so that it can grow by one segment without being drawn again.
#pragma once

#include "support/geometry.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace tarvik {

/// Whole device pixels, origin at the top left of the panel.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool empty() const { return width <= 0 || height <= 0; }
    int right() const { return x + width; }
    int bottom() const { return y + height; }
    PixelRect intersected(const PixelRect& other) const;
    /// The smallest rectangle around both; an empty one counts for nothing.
    PixelRect united(const PixelRect& other) const;
    bool intersects(const PixelRect& other) const { return !intersected(other).empty(); }
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// A level for every pixel of a panel: how near the pixel's centre is to the middle of the line. Overlapping segments
/// leave the nearest (highest) level, so the line has round caps and joins, and colours that follow from the level
/// never add up where segments meet. From `edgeLevel` upward a pixel belongs to the line, antialiased at its edge;
/// below is the shadow, down to 0 where nothing shows.
class TrailMask {
public:
    using Level = std::uint8_t;
    static constexpr Level edgeLevel = 128;
    /// Half covered: where a line without antialiasing would end.
    static constexpr Level halfLevel = 192;
    static constexpr Level fullLevel = 255;

    /// A panel of `width` x `height` device pixels, `pixelsPerPoint` of which make a point. Memory is only touched
    /// where the line comes by.
    TrailMask(int width, int height, double pixelsPerPoint);

    /// Adds the line from one point to another (device pixels of the panel) and returns what may look different now,
    /// as a few rectangles inside the panel that hug the line. Parts outside the panel are left out.
    std::vector<PixelRect> stroke(Point from, Point to);

    /// The levels of one row, from x = 0.
    const Level* row(int y) const {
        return levels_.get() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }
    PixelRect bounds() const { return {0, 0, width_, height_}; }

    /// The line inside `area` without antialiasing, as runs one pixel high, top to bottom.
    std::vector<PixelRect> runs(const PixelRect& area) const;

private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };

    PixelRect capsule(Point from, Point to);
    Level levelAt(double distance) const;

    int width_;
    int height_;
    double halfWidth_;
    double shadowReach_;
    std::unique_ptr<Level[], Free> levels_;
};

/// The colour of every level: premultiplied ARGB, 0xAARRGGBB.
using TrailColours = std::array<std::uint32_t, 256>;

/// The line in `rgb` (0xRRGGBB), translucent, over its soft shadow.
TrailColours trailColours(std::uint32_t rgb, double pixelsPerPoint);

} // namespace tarvik
