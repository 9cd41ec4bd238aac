#include "require.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace tarvik::fuzz {

void require(bool condition, std::string_view what) {
    if (condition)
        return;
    std::cerr << what << '\n';
    std::abort();
}

/// By the table of well-formed byte sequences in the Unicode standard (3.9, table 3-7).
bool isText(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const auto at = [&](std::size_t k) { return k < bytes.size() ? static_cast<unsigned char>(bytes[k]) : 0U; };
        const auto within = [&](std::size_t k, unsigned low, unsigned high) { return at(k) >= low && at(k) <= high; };
        const unsigned first = at(i);
        const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
        const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
        const std::size_t more = first < 0x80 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
        if (first > 0xF4 || (first >= 0x80 && first < 0xC2) || (more > 0 && !within(i + 1, low, high)))
            return false;
        for (std::size_t k = 2; k <= more; ++k) {
            if (!within(i + k, 0x80, 0xBF))
                return false;
        }
        i += more + 1;
    }
    return true;
}

bool isLine(std::string_view bytes) {
    return isText(bytes) && std::none_of(bytes.begin(), bytes.end(), [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte < 0x20 || byte == 0x7F;
           });
}

} // namespace tarvik::fuzz
