// Properties of windows, read with limits: any application may have written them.
#pragma once

#include "platform/linux/x11/x11_connection.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// More than any list that a window manager keeps.
inline constexpr std::size_t maxPropertyItems = 4096;
/// Longer texts are cut.
inline constexpr std::size_t maxPropertyText = 512;

/// A property of 32-bit items, at most `limit` of them. Empty when the window or the property does not exist, or when
/// its type or format is another one.
std::vector<unsigned long> readItems(const X11Connection& x, XWindow window, Atom property, Atom type,
                                     std::size_t limit = maxPropertyItems);
/// The first item.
std::optional<unsigned long> readItem(const X11Connection& x, XWindow window, Atom property, Atom type);

/// A text property (UTF8_STRING or STRING) as one printable line of UTF-8; empty when there is none.
std::string readText(const X11Connection& x, XWindow window, Atom property);

/// WM_CLASS, as printable texts; empty where it is missing.
struct WmClass {
    std::string instance;
    std::string className;
};
/// From its value: two texts, each ended by a zero, or whatever stands there instead.
WmClass wmClassFrom(std::string_view value);
WmClass readWmClass(const X11Connection& x, XWindow window);

} // namespace tarvik
