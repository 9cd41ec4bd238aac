// One event of the pointing devices, as the tap sees it.
#pragma once

#include "support/geometry.h"

#include <chrono>
#include <cstdint>
#include <memory>

namespace tarvik {

/// The values are those of the macOS event types (CGEventType), so that log lines read the same everywhere.
enum class PointerEventType : std::uint32_t {
    leftDown = 1,
    leftUp = 2,
    rightDown = 3,
    rightUp = 4,
    rightDragged = 7,
    scrollWheel = 22,
    otherDown = 25,
    otherUp = 26,
    otherDragged = 27,
    // Notices, not input.
    /// The time has come for which a decision asked; see Decision.
    timeCame = 0xFFFFFFFC,
    firstNotice = timeCame,
    /// The hold is over and its release will not come, or was not the hand's (the mouse was unplugged): what it would
    /// have done is off.
    holdLost = 0xFFFFFFFD,
    /// The system has switched the tap off.
    tapDisabledByTimeout = 0xFFFFFFFE,
    tapDisabledByUserInput = 0xFFFFFFFF,
};

/// Marks every event that the program itself posts: the ASCII bytes "TARVIKEV", big-endian.
inline constexpr std::int64_t selfEventMarker = 0x54415256494B4556;

/// How far a wheel turned along one axis. Positive is up (or left), as the application would scroll.
struct ScrollDelta {
    /// Whole notches.
    std::int64_t line = 0;
    /// Points.
    std::int64_t point = 0;
    /// Notches with their fraction.
    double fixed = 0;
    friend bool operator==(const ScrollDelta&, const ScrollDelta&) = default;
};

struct PointerEvent {
    PointerEventType type = PointerEventType::rightDown;
    /// 0 left, 1 right, 2 middle, 3 and above the others.
    std::int64_t button = 0;
    /// Global, origin at the top left of the main display. The unit is the platform's own: points on macOS, device
    /// pixels on X11, where screens of several scales share one pixel space.
    Point location;
    /// How many units of `location` make one point on the screen where the event happened.
    double unitsPerPoint = 1;
    /// Monotonic; the origin is the platform's.
    std::chrono::nanoseconds time{};
    /// 0, or `selfEventMarker`.
    std::int64_t marker = 0;

    // Of scroll events only.
    ScrollDelta vertical;
    ScrollDelta horizontal;
    /// Not 0 while fingers are on a touch surface, or while its momentum lasts; always 0 for a wheel.
    std::int64_t scrollPhase = 0;
    std::int64_t momentumPhase = 0;
    /// The device's direction is inverted ("natural scrolling"): the deltas are the negative of what the fingers did.
    bool directionInverted = false;

    /// The platform's own event, so that one that is given back keeps every field that the platform put there. Copies
    /// of the value share it; whoever posts must copy it before changing it.
    std::shared_ptr<const void> native;
};

} // namespace tarvik
