// Which of two versions is the newer one.
#pragma once

#include <compare>
#include <string_view>

namespace tarvik {

/// Compares part by part: numbers by value, words by their letters; marks only separate. A word is less than a number
/// and less than nothing, so that 1.0b2 comes before 1.0; numbers that are left over count unless they are zero.
std::weak_ordering compareVersions(std::string_view a, std::string_view b);

} // namespace tarvik
