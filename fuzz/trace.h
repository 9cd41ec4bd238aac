// What happened, as lines of text, so that two accounts of it can be compared and a difference can be read.
#pragma once

#include "model/gesture.h"
#include "ports/pointer_event.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace tarvik::fuzz {

using Trace = std::vector<std::string>;

/// Exact: numbers that differ have different texts.
inline std::string text(double number) {
    char digits[64];
    const int size = std::snprintf(digits, sizeof digits, "%a", number);
    // A sign of "not a number" means nothing.
    return number != number ? "nan" : std::string(digits, static_cast<std::size_t>(size));
}

inline std::string text(Point p) { return text(p.x) + ',' + text(p.y); }

inline std::string text(const ScrollDelta& delta) {
    return std::to_string(delta.line) + '/' + std::to_string(delta.point) + '/' + text(delta.fixed);
}

inline std::string text(const PointerEvent& event) {
    return "event " + std::to_string(static_cast<std::uint32_t>(event.type)) + " button " +
           std::to_string(event.button) + " at " + text(event.location) + " scale " + text(event.unitsPerPoint) +
           " time " + std::to_string(event.time.count()) + " marker " + std::to_string(event.marker) + " wheel " +
           text(event.vertical) + ' ' + text(event.horizontal) + " phases " + std::to_string(event.scrollPhase) + ' ' +
           std::to_string(event.momentumPhase) + (event.directionInverted ? " inverted" : "") +
           (event.native ? " native" : "");
}

inline std::string text(const GestureAction& action, std::optional<Point> point) {
    std::string line = "perform " + std::string(rawValue(action.kind));
    if (action.custom)
        line += " keys " + std::to_string(action.custom->keyCode) + '+' + std::to_string(action.custom->modifiers);
    return line + (point ? " at " + text(*point) : " nowhere");
}

/// The path is given by its first and last points and a sum over all, for it may be long.
template <class Points> std::string trailText(const Points& points, std::size_t count, const std::string& label) {
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum = sum * 0.5 + points[i].x + points[i].y * 3;
    return "trail " + std::to_string(count) + " from " + text(points[0]) + " to " + text(points[count - 1]) + " sum " +
           text(sum) + " '" + label + "'";
}

} // namespace tarvik::fuzz
