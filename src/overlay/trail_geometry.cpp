#include "overlay/trail_geometry.h"

#include "overlay/trail_style.h"

#include <algorithm>

namespace tarvik {

using namespace trailStyle;

Size pillSize(Size text) { return {text.width + 2 * pillPaddingX, text.height + 2 * pillPaddingY}; }

Point pillTextOrigin() { return {pillPaddingX, pillPaddingY}; }

Rect pillFrame(Size pill, Point head, Size panel) {
    // Which limit is applied last decides on a panel that is too small; the two axes differ in it.
    const double x = std::min(std::max(head.x + pillOffset, pillMargin), panel.width - pill.width - pillMargin);
    const double y = std::max(std::min(head.y + pillOffset, panel.height - pill.height - pillMargin), pillMargin);
    return {x, y, pill.width, pill.height};
}

} // namespace tarvik
