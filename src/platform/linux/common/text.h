// Text that other programs wrote, made fit for a log line or a menu.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvik {

/// One line of valid UTF-8 of at most `maxBytes` bytes, cut between characters: what is not UTF-8 becomes U+FFFD;
/// control characters, line separators and the marks that turn the direction of writing become blanks.
std::string printable(std::string_view text, std::size_t maxBytes);

std::string utf8FromLatin1(std::string_view text);

/// ASCII letters in lower case, every other byte as it is.
std::string lowerCase(std::string_view text);

} // namespace tarvik
