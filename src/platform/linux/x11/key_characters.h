// What a key shows for a key symbol.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <optional>
#include <string>

namespace tarvik {

/// The printable character of a symbol, upper-cased, UTF-8; of a dead key its accent standing alone. Nothing for
/// symbols that print nothing.
std::optional<std::string> characterOf(xkb_keysym_t symbol);

} // namespace tarvik
