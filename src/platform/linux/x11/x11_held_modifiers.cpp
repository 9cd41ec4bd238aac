#include "platform/linux/x11/x11_held_modifiers.h"

#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <X11/extensions/XInput2.h>
#include <X11/keysym.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace tarvik {
namespace {

constexpr int firstKeyCode = 8;
constexpr int keyCodeCount = 256;

bool isLock(KeySym symbol) {
    return symbol == XK_Caps_Lock || symbol == XK_Shift_Lock || symbol == XK_Num_Lock || symbol == XK_Scroll_Lock;
}

KeySym firstSymbol(Display* display, KeyCode code) {
    int width = 0;
    KeySym* symbols = XGetKeyboardMapping(display, code, 1, &width);
    const KeySym symbol = symbols && width > 0 ? symbols[0] : NoSymbol;
    if (symbols)
        XFree(symbols);
    return symbol;
}

std::array<bool, keyCodeCount> modifierKeys(Display* display) {
    std::array<bool, keyCodeCount> is = {};
    XModifierKeymap* map = XGetModifierMapping(display);
    for (int i = 0; map && i < 8 * map->max_keypermod; ++i)
        is[map->modifiermap[i]] = true;
    if (map)
        XFreeModifiermap(map);
    return is;
}

/// The modifiers that are down on any keyboard.
std::vector<std::uint8_t> modifiersDown(Display* display, const X11Keymap& down) {
    std::vector<std::uint8_t> codes;
    if (std::all_of(down.begin(), down.end(), [](std::uint8_t bits) { return bits == 0; }))
        return codes;
    const auto isModifier = modifierKeys(display);
    for (int code = firstKeyCode; code < keyCodeCount; ++code) {
        const auto keyCode = static_cast<std::uint8_t>(code);
        if ((down[keyCode / 8] >> keyCode % 8 & 1) && isModifier[keyCode] && !isLock(firstSymbol(display, keyCode)))
            codes.push_back(keyCode);
    }
    return codes;
}

} // namespace

X11KeysDown::X11KeysDown(Display* display)
    : connection_(XGetXCBConnection(display)), question_(xcb_query_keymap(connection_)) {}

X11Keymap X11KeysDown::get() {
    X11Keymap down = {};
    const std::unique_ptr<xcb_query_keymap_reply_t, decltype(&std::free)> answer(
        xcb_query_keymap_reply(connection_, question_, nullptr), std::free);
    if (answer)
        std::copy(std::begin(answer->keys), std::end(answer->keys), down.begin());
    return down;
}

X11HeldModifiers::X11HeldModifiers(const X11Connection& x, const std::vector<int>& keyboards, const X11Keymap& keysDown)
    : x_(x) {
    find(keyboards, keysDown);
    for (auto& key : keys_)
        fake(key, false);
}

X11HeldModifiers::~X11HeldModifiers() {
    if (!keys_.empty())
        watch(false);
}

void X11HeldModifiers::find(const std::vector<int>& keyboards, const X11Keymap& keysDown) {
    const auto codes = modifiersDown(x_.display(), keysDown);
    if (codes.empty())
        return;
    watch(true); // before the keyboards are asked, or a release in between would be missed
    for (const int id : keyboards) {
        const auto keyboard = X11Keyboard::open(x_, id);
        for (const auto code : codes) {
            if (keyboard && keyboard->isDown(code))
                keys_.push_back({keyboard, code});
        }
    }
    if (keys_.empty())
        watch(false);
}

void X11HeldModifiers::fake(Key& key, bool down) {
    key.keyboard->fake(key.code, down);
    key.count(down, -1);
}

void X11HeldModifiers::noteFake(int keyboard, std::uint8_t keyCode, bool down) {
    if (auto* key = keyOf(keyboard, keyCode))
        key->count(down, -1);
}

void X11HeldModifiers::putBack() {
    if (keys_.empty())
        return;
    readRawEvents();
    std::vector<Key*> pressed;
    for (auto& key : keys_) {
        if (key.isHeld()) {
            fake(key, true);
            pressed.push_back(&key);
        }
    }
    // A release between the look and the press came too early to end the press.
    readRawEvents();
    for (auto* key : pressed) {
        if (!key->isHeld())
            fake(*key, false);
    }
    XFlush(x_.display());
}

void X11HeldModifiers::watch(bool on) const {
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits = {};
    if (on) {
        XISetMask(bits.data(), XI_RawKeyPress);
        XISetMask(bits.data(), XI_RawKeyRelease);
    }
    XIEventMask mask = {XIAllDevices, static_cast<int>(bits.size()), bits.data()};
    XISelectEvents(x_.display(), x_.root(), &mask, 1);
    XFlush(x_.display());
}

void X11HeldModifiers::readRawEvents() {
    XSync(x_.display(), False);
    while (XPending(x_.display()) > 0) {
        XEvent event;
        XNextEvent(x_.display(), &event);
        if (event.type != GenericEvent || !XGetEventData(x_.display(), &event.xcookie))
            continue;
        const int type = event.xcookie.evtype;
        if (type == XI_RawKeyPress || type == XI_RawKeyRelease) {
            const auto* raw = static_cast<const XIRawEvent*>(event.xcookie.data);
            if (auto* key = keyOf(raw->deviceid, raw->detail))
                key->count(type == XI_RawKeyPress, +1);
        }
        XFreeEventData(x_.display(), &event.xcookie);
    }
}

X11HeldModifiers::Key* X11HeldModifiers::keyOf(int keyboard, int keyCode) {
    const auto key = std::find_if(keys_.begin(), keys_.end(),
                                  [=](const Key& k) { return k.keyboard->id() == keyboard && k.code == keyCode; });
    return key == keys_.end() ? nullptr : &*key;
}

} // namespace tarvik
