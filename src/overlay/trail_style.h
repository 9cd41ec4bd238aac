// How the trail and its label look; all lengths in points.
#pragma once

namespace tarvik::trailStyle {

inline constexpr double lineWidth = 5;
inline constexpr double lineOpacity = 0.85;

/// The standard deviation of the blur. Beyond three of them nothing is visible.
inline constexpr double shadowRadius = 3;
inline constexpr double shadowOpacity = 0.35;
inline constexpr double shadowReach = 3 * shadowRadius;

inline constexpr double fontSize = 15;
/// On the scale of 100 to 900 that fonts use: semibold.
inline constexpr int fontWeight = 600;

inline constexpr double pillRadius = 10;
inline constexpr double pillOpacity = 0.97;
/// From the edge of the pill to its text.
inline constexpr double pillPaddingX = 12;
inline constexpr double pillPaddingY = 7;
/// From the pointer to the nearest corner of the pill, on both axes.
inline constexpr double pillOffset = 18;
/// What stays free between the pill and the edges of the panel.
inline constexpr double pillMargin = 8;

} // namespace tarvik::trailStyle
