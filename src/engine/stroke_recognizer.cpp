#include "engine/stroke_recognizer.h"

#include <algorithm>
#include <cmath>

namespace tarvik {

void StrokeRecognizer::add(Point point) {
    const double dx = point.x - anchor.x;
    const double dy = point.y - anchor.y;
    const double across = std::abs(dx);
    const double along = std::abs(dy);
    if (minSegment > std::hypot(dx, dy))
        return;
    // Too diagonal to tell. Written so that a coordinate that is no number fails the test.
    const bool horizontal = along < across;
    const double big = horizontal ? across : along;
    const double small = horizontal ? along : across;
    if (!(small * axisRatio <= big))
        return;

    const char letter = horizontal ? (dx > 0 ? 'R' : 'L') : (dy > 0 ? 'D' : 'U');
    const bool repeated = !directions.empty() && directions.back() == letter;
    if (!repeated && directions.size() < maxDirections)
        directions += letter;
    anchor = point;
}

} // namespace tarvik
