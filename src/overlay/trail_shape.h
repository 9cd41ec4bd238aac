// The line of the trail as rectangles, for a window that is cut to it.
#pragma once

#include "overlay/trail_mask.h"

#include <cstddef>
#include <vector>

namespace tarvik {

/// Grows with the line, and never has more than so many rectangles: a window system's work at each change of a window's
/// shape follows their number. When there would be more, the rows of which the shape is made become twice as high, and
/// gaps narrower than a row is high are closed, until they are few enough. Nothing that was covered is ever uncovered.
/// A gesture of a few strokes stays sharp; one that fills the screen becomes coarse.
class TrailShape {
public:
    /// At least 1.
    explicit TrailShape(std::size_t mostRects) : most_(mostRects) {}

    struct Change {
        /// The rectangles are the whole shape, no longer only what has been added.
        bool simplified = false;
        std::vector<PixelRect> rects;
    };
    /// `runs` are one pixel high, with coordinates of at least 0.
    Change add(const std::vector<PixelRect>& runs);

    /// The fewest rectangles that a region in rows needs: equal rows in succession count once.
    std::size_t rectCount() const { return count_; }

private:
    struct Run {
        int left;
        int right;
        friend bool operator==(const Run&, const Run&) = default;
    };
    /// From left to right, more than a gap apart.
    using Row = std::vector<Run>;

    bool insert(Row& row, Run& run) const;
    std::size_t cost(std::size_t row) const;
    void simplify();
    std::vector<PixelRect> all() const;
    PixelRect rect(std::size_t row, Run run) const;

    const std::size_t most_;
    std::size_t count_ = 0;
    int rowHeight_ = 1;
    std::vector<Row> rows_;
};

} // namespace tarvik
