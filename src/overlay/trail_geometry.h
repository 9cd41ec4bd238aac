// Where the parts of the trail stand: pure functions, in points, origin at the top left of the panel.
#pragma once

#include "support/geometry.h"

namespace tarvik {

/// The size of the pill around a text of that size.
Size pillSize(Size text);

/// Where the text stands inside the pill (top left corner).
Point pillTextOrigin();

/// The pill right of and below `head`, kept inside the panel. On a panel too small for it the pill keeps its distance
/// from the top and from the right edge.
Rect pillFrame(Size pill, Point head, Size panel);

} // namespace tarvik
