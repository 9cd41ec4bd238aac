// The X server's clock without its wrap.
#pragma once

#include <X11/Xlib.h>

#include <chrono>
#include <cstdint>

namespace tarvik {

/// Widens the server's 32-bit milliseconds, which wrap after 49.7 days. The first stamp is the origin. A stamp may come
/// after a later one, by less than a minute; apart from that the result only grows, however long no stamp came.
class X11ServerClock {
public:
    std::chrono::nanoseconds widen(Time stamp) {
        const auto now = static_cast<std::uint32_t>(stamp);
        // The differences are taken in 32 bits, where a wrap does not show.
        const std::uint32_t ahead = now - last_;
        const std::uint32_t behind = last_ - now;
        if (started_)
            milliseconds_ += behind < 60'000 ? -std::int64_t{behind} : std::int64_t{ahead};
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
