// What a fuzzer demands.
#pragma once

#include <string_view>

namespace tarvik::fuzz {

/// Ends the process with `what` unless the condition holds.
void require(bool condition, std::string_view what);

/// Well-formed UTF-8.
bool isText(std::string_view bytes);

/// Text that can stand in a menu or a log line: UTF-8 without control characters.
bool isLine(std::string_view bytes);

} // namespace tarvik::fuzz
