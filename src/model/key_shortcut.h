// A key combination as it is recorded, stored and posted.
#pragma once

#include <cstdint>

namespace tarvik {

/// Bits of a modifier word. The values are those of the macOS event flags (CGEventFlags), which the stored table uses
/// on every platform: `option` is Alt and `command` is Super on Linux.
namespace flags {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t numericPad = 0x200000;
inline constexpr std::uint64_t secondaryFunction = 0x800000;
} // namespace flags

/// Virtual key codes: positions on the ANSI keyboard, as macOS numbers them (HIToolbox, Events.h). A position is what
/// the stored table holds on every platform, so that a table can move between machines.
namespace key {
inline constexpr std::uint16_t d = 2;
inline constexpr std::uint16_t f = 3;
inline constexpr std::uint16_t h = 4;
inline constexpr std::uint16_t q = 12;
inline constexpr std::uint16_t w = 13;
inline constexpr std::uint16_t r = 15;
inline constexpr std::uint16_t t = 17;
inline constexpr std::uint16_t rightBracket = 30;
inline constexpr std::uint16_t leftBracket = 33;
inline constexpr std::uint16_t returnKey = 36;
inline constexpr std::uint16_t m = 46;
inline constexpr std::uint16_t tab = 48;
inline constexpr std::uint16_t space = 49;
inline constexpr std::uint16_t grave = 50;
inline constexpr std::uint16_t backspace = 51;
inline constexpr std::uint16_t escape = 53;
inline constexpr std::uint16_t command = 55;
inline constexpr std::uint16_t shift = 56;
inline constexpr std::uint16_t option = 58;
inline constexpr std::uint16_t control = 59;
inline constexpr std::uint16_t f5 = 96;
inline constexpr std::uint16_t f6 = 97;
inline constexpr std::uint16_t f7 = 98;
inline constexpr std::uint16_t f3 = 99;
inline constexpr std::uint16_t f8 = 100;
inline constexpr std::uint16_t f9 = 101;
inline constexpr std::uint16_t f11 = 103;
inline constexpr std::uint16_t f10 = 109;
inline constexpr std::uint16_t f12 = 111;
inline constexpr std::uint16_t home = 115;
inline constexpr std::uint16_t pageUp = 116;
inline constexpr std::uint16_t forwardDelete = 117;
inline constexpr std::uint16_t f4 = 118;
inline constexpr std::uint16_t end = 119;
inline constexpr std::uint16_t f2 = 120;
inline constexpr std::uint16_t pageDown = 121;
inline constexpr std::uint16_t f1 = 122;
inline constexpr std::uint16_t leftArrow = 123;
inline constexpr std::uint16_t rightArrow = 124;
inline constexpr std::uint16_t downArrow = 125;
inline constexpr std::uint16_t upArrow = 126;
} // namespace key

struct KeyShortcut {
    std::uint16_t keyCode = 0;
    /// Bits other than the four of `flags` that name modifier keys are kept and compared, but neither shown nor posted.
    std::uint64_t modifiers = 0;
    friend bool operator==(const KeyShortcut&, const KeyShortcut&) = default;
};

} // namespace tarvik
