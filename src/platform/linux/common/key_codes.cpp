#include "platform/linux/common/key_codes.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <iterator>

namespace tarvik {
namespace {

struct Row {
    std::uint16_t keyCode;
    std::uint16_t evdev;
};

// Left: the virtual key codes of HIToolbox's Events.h. Where the two systems name a key differently, the pairs are
// those of the same usage in the USB HID usage tables (Help is Insert, the keypad's Clear is Num Lock, Eisu is LANG2).
constexpr Row rows[] = {
    // Letters, in rows of the ANSI keyboard.
    {12, KEY_Q},
    {13, KEY_W},
    {14, KEY_E},
    {15, KEY_R},
    {17, KEY_T},
    {16, KEY_Y},
    {32, KEY_U},
    {34, KEY_I},
    {31, KEY_O},
    {35, KEY_P},
    {0, KEY_A},
    {1, KEY_S},
    {2, KEY_D},
    {3, KEY_F},
    {5, KEY_G},
    {4, KEY_H},
    {38, KEY_J},
    {40, KEY_K},
    {37, KEY_L},
    {6, KEY_Z},
    {7, KEY_X},
    {8, KEY_C},
    {9, KEY_V},
    {11, KEY_B},
    {45, KEY_N},
    {46, KEY_M},
    // Digits.
    {18, KEY_1},
    {19, KEY_2},
    {20, KEY_3},
    {21, KEY_4},
    {23, KEY_5},
    {22, KEY_6},
    {26, KEY_7},
    {28, KEY_8},
    {25, KEY_9},
    {29, KEY_0},
    // Punctuation. 10 is the key that ISO keyboards have and ANSI keyboards have not.
    {50, KEY_GRAVE},
    {27, KEY_MINUS},
    {24, KEY_EQUAL},
    {33, KEY_LEFTBRACE},
    {30, KEY_RIGHTBRACE},
    {42, KEY_BACKSLASH},
    {41, KEY_SEMICOLON},
    {39, KEY_APOSTROPHE},
    {43, KEY_COMMA},
    {47, KEY_DOT},
    {44, KEY_SLASH},
    {10, KEY_102ND},
    // Editing.
    {36, KEY_ENTER},
    {48, KEY_TAB},
    {49, KEY_SPACE},
    {51, KEY_BACKSPACE},
    {53, KEY_ESC},
    {117, KEY_DELETE},
    {114, KEY_INSERT},
    {110, KEY_COMPOSE},
    // Navigation.
    {115, KEY_HOME},
    {119, KEY_END},
    {116, KEY_PAGEUP},
    {121, KEY_PAGEDOWN},
    {123, KEY_LEFT},
    {124, KEY_RIGHT},
    {125, KEY_DOWN},
    {126, KEY_UP},
    // Modifiers.
    {55, KEY_LEFTMETA},
    {54, KEY_RIGHTMETA},
    {56, KEY_LEFTSHIFT},
    {60, KEY_RIGHTSHIFT},
    {58, KEY_LEFTALT},
    {61, KEY_RIGHTALT},
    {59, KEY_LEFTCTRL},
    {62, KEY_RIGHTCTRL},
    {57, KEY_CAPSLOCK},
    {63, KEY_FN},
    // Function keys.
    {122, KEY_F1},
    {120, KEY_F2},
    {99, KEY_F3},
    {118, KEY_F4},
    {96, KEY_F5},
    {97, KEY_F6},
    {98, KEY_F7},
    {100, KEY_F8},
    {101, KEY_F9},
    {109, KEY_F10},
    {103, KEY_F11},
    {111, KEY_F12},
    {105, KEY_F13},
    {107, KEY_F14},
    {113, KEY_F15},
    {106, KEY_F16},
    {64, KEY_F17},
    {79, KEY_F18},
    {80, KEY_F19},
    {90, KEY_F20},
    // Keypad.
    {82, KEY_KP0},
    {83, KEY_KP1},
    {84, KEY_KP2},
    {85, KEY_KP3},
    {86, KEY_KP4},
    {87, KEY_KP5},
    {88, KEY_KP6},
    {89, KEY_KP7},
    {91, KEY_KP8},
    {92, KEY_KP9},
    {65, KEY_KPDOT},
    {69, KEY_KPPLUS},
    {78, KEY_KPMINUS},
    {67, KEY_KPASTERISK},
    {75, KEY_KPSLASH},
    {81, KEY_KPEQUAL},
    {76, KEY_KPENTER},
    {71, KEY_NUMLOCK},
    // Japanese keyboards.
    {93, KEY_YEN},
    {94, KEY_RO},
    {95, KEY_KPCOMMA},
    {102, KEY_HANJA},
    {104, KEY_HANGEUL},
    // Sound.
    {72, KEY_VOLUMEUP},
    {73, KEY_VOLUMEDOWN},
    {74, KEY_MUTE},
};

} // namespace

std::optional<std::uint16_t> evdevFromKeyCode(std::uint16_t keyCode) {
    const auto* row =
        std::find_if(std::begin(rows), std::end(rows), [keyCode](const Row& r) { return r.keyCode == keyCode; });
    return row == std::end(rows) ? std::nullopt : std::optional(row->evdev);
}

std::optional<std::uint16_t> keyCodeFromEvdev(std::uint16_t evdevCode) {
    const auto* row =
        std::find_if(std::begin(rows), std::end(rows), [evdevCode](const Row& r) { return r.evdev == evdevCode; });
    return row == std::end(rows) ? std::nullopt : std::optional(row->keyCode);
}

const std::vector<std::uint16_t>& allKeyCodes() {
    static const auto codes = [] {
        std::vector<std::uint16_t> all;
        for (const auto& row : rows)
            all.push_back(row.keyCode);
        return all;
    }();
    return codes;
}

std::optional<std::uint8_t> xKeyCodeFromEvdev(std::uint16_t evdevCode) {
    constexpr int offset = 8; // the X server's codes begin at 8
    const int code = evdevCode + offset;
    return code <= 255 ? std::optional(static_cast<std::uint8_t>(code)) : std::nullopt;
}

} // namespace tarvik
