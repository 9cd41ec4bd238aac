// Small conversions of text.
#pragma once

#include <string>
#include <string_view>

namespace tarvik {

std::string utf8FromLatin1(std::string_view text);

/// ASCII letters in lower case, every other byte as it is.
std::string lowerCase(std::string_view text);

} // namespace tarvik
