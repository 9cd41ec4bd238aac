// Synthetic keys on X11.
#pragma once

#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_keyboards.h"
#include "ports/key_poster.h"
#include "support/log.h"

#include <set>

namespace tarvik {

/// Posts keys on the keyboard that was typed on last, so that they mean what they mean on that keyboard and no
/// application is told that the keyboard has changed. The flags of the events are not used: on X11 the modifiers' own
/// events carry them.
class X11KeyPoster final : public KeyPoster {
public:
    X11KeyPoster(const X11Connection& x, LogSink& log) : x_(x), log_(log) {}
    void post(const std::vector<KeyEvent>& events) override;

private:
    struct XKey {
        std::uint8_t code;
        bool down;
    };
    std::shared_ptr<const X11Keyboard> keyboardInUse(const X11Keyboards& found);
    std::vector<XKey> xKeys(const std::vector<KeyEvent>& events);

    const X11Connection& x_;
    LogSink& log_;
    std::set<std::uint16_t> unknown_; // logged already
    X11KnownKeyboards keyboards_;
};

} // namespace tarvik
