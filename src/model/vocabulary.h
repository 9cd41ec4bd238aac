// Everything about the actions that differs between platforms: titles, keys, ways of carrying them out, wording.
// One table per platform; both are compiled and tested everywhere.
#pragma once

#include "model/action_kind.h"
#include "model/key_names.h"
#include "model/key_shortcut.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvik {

/// Who carries an action out first. Where that fails, the row's `fallback` keys are posted, if it has any.
enum class Route : std::uint8_t {
    nothing,
    /// The row's `shortcut` is posted.
    keys,
    /// The desktop itself.
    shell,
    /// The window under the gesture's start, by the decision table of the kind.
    window,
    /// The keys that the user recorded.
    recorded,
};

/// Keys of a built-in action.
struct BuiltinKeys {
    /// Where the key sits on the ANSI keyboard.
    KeyShortcut shortcut;
    /// When set, the key that carries this letter in the current layout is meant, wherever it sits; the position counts
    /// only if no key of the layout carries it.
    char letter = 0;
    friend bool operator==(const BuiltinKeys&, const BuiltinKeys&) = default;
};

/// What becomes of an action's keys in a terminal, where Ctrl and a letter belong to the program inside.
enum class InTerminal : std::uint8_t { same, withShift, nothing };

struct ActionRow {
    ActionKind kind = ActionKind::none;
    std::string_view title;
    Route route = Route::nothing;
    std::optional<BuiltinKeys> shortcut;
    std::optional<BuiltinKeys> fallback;
    InTerminal inTerminal = InTerminal::same;
};

struct Vocabulary {
    KeyStyle keyStyle = KeyStyle::glyphs;
    std::array<ActionRow, actionKindCount> actions;
    /// Log lines; the display form of the fallback keys follows the first two.
    std::string_view minimizeFailed;
    std::string_view shellFailed;
    /// Logged when the desktop could not do it and there are no keys for it; empty logs nothing.
    std::string_view shellFailedWithoutKeys;

    const ActionRow& operator[](ActionKind kind) const { return actions[index(kind)]; }
};

const Vocabulary& macosVocabulary();
const Vocabulary& linuxVocabulary();

} // namespace tarvik
