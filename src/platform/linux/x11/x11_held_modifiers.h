// The modifiers that the user holds while keys are posted.
#pragma once

#include "platform/linux/x11/x11_keyboards.h"

#include <xcb/xproto.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace tarvik {

/// A bit for each key code.
using X11Keymap = std::array<std::uint8_t, 32>;

/// Asks which keys are down on any keyboard. The question goes out with the next one that Xlib waits for, so that both
/// take one round trip.
class X11KeysDown {
public:
    explicit X11KeysDown(Display* display);
    /// Once. Nothing is down when the connection is broken.
    X11Keymap get();

private:
    xcb_connection_t* const connection_;
    const xcb_query_keymap_cookie_t question_;
};

/// Lifts the held modifiers when it is made, and puts those back that the user still holds when it is told to. Caps
/// Lock, Num Lock and the like are no modifiers to hold.
///
/// A key can only be lifted on the keyboard on which it is down, and then the server takes it to be up there, whatever
/// the finger does. The finger is followed through the keyboards' raw events instead: what is not one of our own fakes
/// is the user's.
class X11HeldModifiers {
public:
    X11HeldModifiers(const X11Connection& x, const std::vector<int>& keyboards, const X11Keymap& keysDown);
    ~X11HeldModifiers();
    X11HeldModifiers(const X11HeldModifiers&) = delete;
    X11HeldModifiers& operator=(const X11HeldModifiers&) = delete;

    /// To be told of every event that is faked meanwhile.
    void noteFake(int keyboard, std::uint8_t keyCode, bool down);
    void putBack();

private:
    struct Key {
        std::shared_ptr<const X11Keyboard> keyboard;
        std::uint8_t code = 0;
        /// Raw presses and releases seen, without those that we faked.
        int presses = 0;
        int releases = 0;

        bool isHeld() const { return releases <= presses; }
        void count(bool down, int by) { (down ? presses : releases) += by; }
    };

    void find(const std::vector<int>& keyboards, const X11Keymap& keysDown);
    void fake(Key& key, bool down);
    void watch(bool on) const;
    void readRawEvents();
    Key* keyOf(int keyboard, int keyCode);

    const X11Connection& x_;
    std::vector<Key> keys_;
};

} // namespace tarvik
