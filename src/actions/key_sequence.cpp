#include "actions/key_sequence.h"

#include <algorithm>
#include <iterator>

namespace tarvik {
namespace {

struct ModifierKey {
    std::uint64_t flag;
    std::uint16_t code;
};

constexpr ModifierKey modifierKeys[] = {
    {flags::control, key::control},
    {flags::option, key::option},
    {flags::shift, key::shift},
    {flags::command, key::command},
};

constexpr std::uint16_t arrowKeys[] = {key::leftArrow, key::rightArrow, key::upArrow, key::downArrow};

constexpr std::uint16_t functionKeys[] = {
    key::home, key::end, key::pageUp, key::pageDown, key::forwardDelete, key::f1,  key::f2,  key::f3, key::f4, key::f5,
    key::f6,   key::f7,  key::f8,     key::f9,       key::f10,           key::f11, key::f12,
};

template <class Codes> bool contains(const Codes& codes, std::uint16_t code) {
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

std::uint64_t ownFlags(std::uint16_t code) {
    if (contains(arrowKeys, code))
        return flags::numericPad | flags::secondaryFunction;
    if (contains(functionKeys, code))
        return flags::secondaryFunction;
    return 0;
}

} // namespace

std::vector<KeyEvent> keySequence(const KeyShortcut& shortcut) {
    std::vector<KeyEvent> events;
    std::vector<ModifierKey> held;
    std::uint64_t running = 0;
    for (const auto& modifier : modifierKeys) {
        if (!(shortcut.modifiers & modifier.flag))
            continue;
        running |= modifier.flag;
        held.push_back(modifier);
        events.push_back({modifier.code, true, running});
    }
    const auto keyFlags = running | ownFlags(shortcut.keyCode);
    events.push_back({shortcut.keyCode, true, keyFlags});
    events.push_back({shortcut.keyCode, false, keyFlags});
    for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier) {
        running &= ~modifier->flag;
        events.push_back({modifier->code, false, running});
    }
    return events;
}

} // namespace tarvik
