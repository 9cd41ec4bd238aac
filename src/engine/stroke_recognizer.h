// Turns the pointer's path into direction letters, one for each straight stroke.
#pragma once

#include "support/geometry.h"

#include <string>

namespace tarvik {

/// Fed with every pointer position of one hold. The letters are "R", "L", "D", "U" in stroke order, y growing
/// downwards; at most `maxDirections` of them, and never the same letter twice in a row.
struct StrokeRecognizer {
    /// A movement counts for an axis only when that axis is at least this many times the other (35.5 degrees off at
    /// most).
    static constexpr double axisRatio = 1.4;
    static constexpr std::size_t maxDirections = 6;

    /// How far the pointer must get from the anchor before a stroke can be recorded; in the unit of the points.
    double minSegment = 30;
    /// Where the current stroke is measured from.
    Point anchor;
    std::string directions;

    void add(Point point);
};

} // namespace tarvik
