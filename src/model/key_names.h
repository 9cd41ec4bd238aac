// How key combinations are written for people.
#pragma once

#include "model/key_shortcut.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tarvik {

/// Glyphs: "⇧⌘T". Words: "Ctrl+Shift+T".
enum class KeyStyle : std::uint8_t { glyphs, words };

/// The character that the current keyboard layout has at a position without modifiers, upper-cased; nothing where the
/// layout has none.
using KeyCharacters = std::function<std::optional<std::string>(std::uint16_t keyCode)>;

class KeyNames {
public:
    KeyNames(KeyStyle style, KeyCharacters characters);

    /// Special keys by the style's own name, every other key by the layout's character, and "#" with the code in
    /// decimal where the layout has none.
    std::string keyName(std::uint16_t keyCode) const;
    /// Modifiers in the order of the style, then the key.
    std::string displayString(const KeyShortcut& shortcut) const;

private:
    KeyStyle style_;
    KeyCharacters characters_;
};

} // namespace tarvik
