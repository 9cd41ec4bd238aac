// Synthetic keys.
#pragma once

#include <cstdint>
#include <vector>

namespace tarvik {

struct KeyEvent {
    /// A position on the ANSI keyboard; see model/key_shortcut.h.
    std::uint16_t code = 0;
    bool down = false;
    /// The modifier word that the event carries.
    std::uint64_t flags = 0;
    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

class KeyPoster {
public:
    virtual ~KeyPoster() = default;
    /// Posts the events in order and without pauses. An event that cannot be made is skipped. Modifiers that the user
    /// holds do not take part. The actions' thread.
    virtual void post(const std::vector<KeyEvent>& events) = 0;
};

} // namespace tarvik
