// The status item's symbols.
#pragma once

#include "ports/status_item.h"

#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <QtGui/QPainterPath>

namespace tarvik {

/// The side of the square that they are drawn in, and the width of their lines; ends and corners are round.
inline constexpr int symbolGrid = 24;
inline constexpr double symbolStroke = 1.5;

/// The contours of the lines, to be filled: panels recolour what is filled, not what is stroked.
QPainterPath symbolOutline(StatusIcon icon);

/// The name under which icon themes have the symbol.
const char* symbolName(StatusIcon icon);

/// The symbol that says "off" is faded.
inline constexpr double disabledOpacity = 0.55;

/// Knows its name in the icon theme where it is installed there, so that the panel can draw it in its own colour;
/// everywhere it has pixmaps in `colour`.
QIcon symbolIcon(StatusIcon icon, QColor colour);

} // namespace tarvik
