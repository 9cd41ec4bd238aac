// The stored form of the gesture table: {"L":{"kind":"spaceLeft"},"UD":{"kind":"custom","custom":{"keyCode":17,
// "modifiers":1179648}}}. The same on every platform.
#pragma once

#include "model/gesture.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

/// Nothing when a text in the table is not UTF-8.
std::optional<std::string> encodeGestureTable(const GestureTable& table);

/// Nothing when the text is not a JSON object of valid entries: one bad entry spoils the whole, so that a table is
/// never silently cut down. Unknown members of an entry are ignored. Integers are exact over their whole range.
std::optional<GestureTable> decodeGestureTable(std::string_view json);

} // namespace tarvik
