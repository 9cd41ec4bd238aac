// Text that others wrote, made fit for a log line or a menu.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvik {

/// One line of valid UTF-8 of at most `maxBytes` bytes, cut between characters: what is not UTF-8 becomes U+FFFD;
/// control characters, line separators and the marks that turn the direction of writing become blanks.
std::string printable(std::string_view text, std::size_t maxBytes);

} // namespace tarvik
