#include "platform/linux/x11/key_characters.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <iterator>

namespace tarvik {
namespace {

struct DeadKey {
    xkb_keysym_t symbol;
    const char* accent;
};

constexpr DeadKey deadKeys[] = {
    {XKB_KEY_dead_grave, "`"},       {XKB_KEY_dead_acute, "´"},     {XKB_KEY_dead_circumflex, "^"},
    {XKB_KEY_dead_tilde, "~"},       {XKB_KEY_dead_macron, "¯"},    {XKB_KEY_dead_breve, "˘"},
    {XKB_KEY_dead_abovedot, "˙"},    {XKB_KEY_dead_diaeresis, "¨"}, {XKB_KEY_dead_abovering, "˚"},
    {XKB_KEY_dead_doubleacute, "˝"}, {XKB_KEY_dead_caron, "ˇ"},     {XKB_KEY_dead_cedilla, "¸"},
    {XKB_KEY_dead_ogonek, "˛"},      {XKB_KEY_dead_iota, "ͺ"},      {XKB_KEY_dead_belowdot, "."},
    {XKB_KEY_dead_hook, "ˀ"},        {XKB_KEY_dead_horn, "ʼ"},      {XKB_KEY_dead_stroke, "/"},
    {XKB_KEY_dead_currency, "¤"},    {XKB_KEY_dead_greek, "µ"},
};

} // namespace

std::optional<std::string> characterOf(xkb_keysym_t symbol) {
    const auto* dead = std::find_if(std::begin(deadKeys), std::end(deadKeys),
                                    [symbol](const DeadKey& row) { return row.symbol == symbol; });
    if (dead != std::end(deadKeys))
        return dead->accent;
    const auto code = xkb_keysym_to_utf32(symbol);
    const bool surrogate = code >= 0xD800 && code < 0xE000; // half a character: a keymap may name one
    if (code < 0x20 || (code >= 0x7F && code < 0xA0) || surrogate)
        return std::nullopt;
    char text[8] = {};
    if (xkb_keysym_to_utf8(xkb_keysym_to_upper(symbol), text, sizeof text) <= 1)
        return std::nullopt;
    return text;
}

} // namespace tarvik
