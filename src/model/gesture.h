// Gestures and what is bound to them.
#pragma once

#include "model/action_kind.h"
#include "model/key_shortcut.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

class KeyNames;
struct Vocabulary;

/// The value bound to a gesture. `custom` has a meaning only for `ActionKind::custom`, but is kept and compared for
/// every kind: switching a gesture away from its recorded shortcut and back must not lose it.
struct GestureAction {
    ActionKind kind = ActionKind::none;
    std::optional<KeyShortcut> custom;
    friend bool operator==(const GestureAction&, const GestureAction&) = default;
};

/// From a gesture string (the letters "L", "R", "U", "D" in stroke order) to its action.
using GestureTable = std::map<std::string, GestureAction, std::less<>>;

namespace Gesture {

/// The strokes as arrows with single spaces between them: "RDL" is "→ ↓ ←". Other characters are kept.
std::string arrows(std::string_view directions);

/// What the action is called: in the trail's label, in the log and in the list of gestures.
std::string title(const GestureAction& action, const Vocabulary& vocabulary, const KeyNames& keyNames);

} // namespace Gesture

/// The table that a new user starts with.
const GestureTable& defaultMappings();

} // namespace tarvik
