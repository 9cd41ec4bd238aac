// The keys that the user types into the program's own windows, before any control gets them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace tarvik {

struct TypedKey {
    /// A position (see model/key_shortcut.h); nothing for a key that has no position code.
    std::optional<std::uint16_t> keyCode;
    /// Every modifier bit of the event, lock and function keys included.
    std::uint64_t modifiers = 0;
};

/// Main thread.
class KeyMonitor {
public:
    virtual ~KeyMonitor() = default;
    /// From now on key presses go to the handler and to nobody else; modifier keys alone are not reported. Replaces an
    /// earlier handler. The handler may call `stop`.
    virtual void start(std::function<void(TypedKey)> handler) = 0;
    virtual void stop() = 0;
};

} // namespace tarvik
