// Which switch of a mouse is which button: left-handed users swap them.
#pragma once

#include <X11/Xlib.h>

#include <array>

namespace tarvik {

/// Events of grabs carry the button that the user means, raw events and fake input the switch of the device. The map is
/// the core pointer's. Tap's thread.
class X11ButtonMap {
public:
    /// Reads the map. One round trip; again at each MappingNotify.
    void read(Display* display);

    int physical(int button) const { return inRange(button) ? toPhysical_[static_cast<std::size_t>(button)] : button; }
    int logical(int button) const { return inRange(button) ? toLogical_[static_cast<std::size_t>(button)] : button; }

private:
    static constexpr std::size_t count = 32;
    static bool inRange(int button) { return button > 0 && button < static_cast<int>(count); }

    std::array<int, count> toPhysical_{};
    std::array<int, count> toLogical_{};
};

} // namespace tarvik
