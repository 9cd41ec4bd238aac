#include "platform/linux/x11/x11_key_poster.h"

#include "platform/linux/common/key_codes.h"
#include "platform/linux/x11/x11_error_trap.h"
#include "platform/linux/x11/x11_held_modifiers.h"
#include "platform/linux/x11/x11_keyboards.h"

#include <X11/extensions/XTest.h>

#include <string>

namespace tarvik {

void X11KeyPoster::post(const std::vector<KeyEvent>& events) {
    const auto keys = xKeys(events);
    if (keys.empty() || x_.lost())
        return;
    x_.discardEvents();
    X11ErrorTrap trap(x_.display());
    X11KeysDown keysDown(x_.display()); // answered together with the next question
    const auto found = findX11Keyboards(x_, keyboards_);
    const auto keyboard = keyboardInUse(found);
    X11HeldModifiers held(x_, found.ids, keysDown.get());
    for (const auto& key : keys) {
        if (keyboard) {
            keyboard->fake(key.code, key.down);
            held.noteFake(keyboard->id(), key.code, key.down);
        } else {
            XTestFakeKeyEvent(x_.display(), key.code, key.down ? True : False, CurrentTime);
        }
    }
    held.putBack();
    if (const int error = trap.sync())
        log_.write("keys not posted: X error " + std::to_string(error));
}

std::shared_ptr<const X11Keyboard> X11KeyPoster::keyboardInUse(const X11Keyboards& found) {
    if (!found.inUse)
        return nullptr;
    auto& keyboard = keyboards_.opened[{found.inUse, found.nameInUse}];
    if (!keyboard)
        keyboard = X11Keyboard::open(x_, found.inUse);
    return keyboard;
}

std::vector<X11KeyPoster::XKey> X11KeyPoster::xKeys(const std::vector<KeyEvent>& events) {
    std::vector<XKey> keys;
    for (const auto& event : events) {
        const auto evdev = evdevFromKeyCode(event.code);
        const auto code = evdev ? xKeyCodeFromEvdev(*evdev) : std::nullopt;
        if (code)
            keys.push_back({*code, event.down});
        else if (unknown_.insert(event.code).second)
            log_.write("no key with code " + std::to_string(event.code) + " on this system");
    }
    return keys;
}

} // namespace tarvik
