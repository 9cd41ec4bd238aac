// The current keyboard layout.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarvik {

/// Callable from any thread.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;
    /// The character at a position (see model/key_shortcut.h) without modifiers, upper-cased, UTF-8; nothing where the
    /// layout has none.
    virtual std::optional<std::string> character(std::uint16_t keyCode) const = 0;
    /// The position whose key carries a lower-case ASCII letter without modifiers; nothing when no key does.
    virtual std::optional<std::uint16_t> positionOf(char letter) const = 0;
};

} // namespace tarvik
