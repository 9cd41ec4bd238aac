// How the desktop wants windows to look.
#pragma once

#include <cstdint>
#include <functional>

namespace tarvik {

struct Look {
    bool dark = false;
    /// 0xRRGGBB.
    std::uint32_t accent = 0x3584E4;
    /// Nothing is to move.
    bool reducedMotion = false;
    friend bool operator==(const Look&, const Look&) = default;
};

/// Main thread.
class Appearance {
public:
    virtual ~Appearance() = default;
    virtual Look look() = 0;
    /// Called when the look has changed. Replaces an earlier handler.
    virtual void onChange(std::function<void()> handler) = 0;
};

} // namespace tarvik
