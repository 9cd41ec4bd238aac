#include "support/printable.h"

#include <cstdint>

namespace tarvik {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

struct Character {
    std::uint32_t code = 0;
    std::size_t length = 0; // 0: not UTF-8
};

Character firstCharacter(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80)
        return {byte(0), 1};
    const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
    if (byte(0) < 0xC2 || byte(0) > 0xF4 || text.size() < length)
        return {};
    std::uint32_t code = byte(0) & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {};
        code = code << 6 | (byte(i) & 0x3F);
    }
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return {};
    return {code, length};
}

bool isUnprintable(std::uint32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x61C || (code >= 0x200E && code <= 0x200F) ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

} // namespace

std::string printable(std::string_view text, std::size_t maxBytes) {
    std::string result;
    while (!text.empty()) {
        const auto [code, length] = firstCharacter(text);
        const auto piece = length == 0 ? replacement : isUnprintable(code) ? " " : text.substr(0, length);
        if (result.size() + piece.size() > maxBytes)
            break;
        result += piece;
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

} // namespace tarvik
