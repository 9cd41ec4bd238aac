#include "model/key_names.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tarvik {
namespace {

struct SpecialKey {
    std::uint16_t code;
    std::string_view glyph;
    std::string_view word;
};

constexpr SpecialKey specialKeys[] = {
    {key::returnKey, "↩", "Enter"},
    {key::tab, "⇥", "Tab"},
    {key::space, "Space", "Space"},
    {key::backspace, "⌫", "Backspace"},
    {key::escape, "⎋", "Esc"},
    {key::f5, "F5", "F5"},
    {key::f6, "F6", "F6"},
    {key::f7, "F7", "F7"},
    {key::f3, "F3", "F3"},
    {key::f8, "F8", "F8"},
    {key::f9, "F9", "F9"},
    {key::f11, "F11", "F11"},
    {key::f10, "F10", "F10"},
    {key::f12, "F12", "F12"},
    {key::home, "↖", "Home"},
    {key::pageUp, "⇞", "Page Up"},
    {key::forwardDelete, "⌦", "Delete"},
    {key::f4, "F4", "F4"},
    {key::end, "↘", "End"},
    {key::f2, "F2", "F2"},
    {key::pageDown, "⇟", "Page Down"},
    {key::f1, "F1", "F1"},
    {key::leftArrow, "←", "Left"},
    {key::rightArrow, "→", "Right"},
    {key::downArrow, "↓", "Down"},
    {key::upArrow, "↑", "Up"},
};

struct ModifierName {
    std::uint64_t flag;
    std::string_view name;
};

using ModifierNames = std::array<ModifierName, 4>;

constexpr ModifierNames glyphNames = {{
    {flags::control, "⌃"},
    {flags::option, "⌥"},
    {flags::shift, "⇧"},
    {flags::command, "⌘"},
}};

constexpr ModifierNames wordNames = {{
    {flags::command, "Super+"},
    {flags::control, "Ctrl+"},
    {flags::option, "Alt+"},
    {flags::shift, "Shift+"},
}};

} // namespace

KeyNames::KeyNames(KeyStyle style, KeyCharacters characters) : style_(style), characters_(std::move(characters)) {}

std::string KeyNames::keyName(std::uint16_t keyCode) const {
    const auto special = std::find_if(std::begin(specialKeys), std::end(specialKeys),
                                      [keyCode](const SpecialKey& row) { return row.code == keyCode; });
    if (special != std::end(specialKeys))
        return std::string(style_ == KeyStyle::glyphs ? special->glyph : special->word);
    // The Super key stands alone where it opens a desktop's overview.
    if (style_ == KeyStyle::words && keyCode == key::command)
        return "Super";
    if (auto character = characters_(keyCode); character && !character->empty())
        return *std::move(character);
    return "#" + std::to_string(keyCode);
}

std::string KeyNames::displayString(const KeyShortcut& shortcut) const {
    std::string text;
    for (const auto& [flag, name] : style_ == KeyStyle::glyphs ? glyphNames : wordNames) {
        if (shortcut.modifiers & flag)
            text += name;
    }
    return text + keyName(shortcut.keyCode);
}

} // namespace tarvik
