// The X server's clock without its wrap.
#pragma once

#include <X11/Xlib.h>

#include <chrono>
#include <cstdint>

namespace tarvik {

/// Widens the server's 32-bit milliseconds, which wrap after 49.7 days. Stamps may come a little out of order; the
/// first one is the origin.
class X11ServerClock {
public:
    std::chrono::nanoseconds widen(Time stamp) {
        const auto now = static_cast<std::uint32_t>(stamp);
        // The difference is taken in 32 bits, where a wrap does not show.
        milliseconds_ += started_ ? static_cast<std::int32_t>(now - last_) : 0;
        started_ = true;
        last_ = now;
        return std::chrono::milliseconds(milliseconds_);
    }

private:
    bool started_ = false;
    std::uint32_t last_ = 0;
    std::int64_t milliseconds_ = 0;
};

} // namespace tarvik
