#include "platform/linux/x11/x11_button_map.h"

#include <algorithm>
#include <numeric>

namespace tarvik {

void X11ButtonMap::read(Display* display) {
    std::iota(toPhysical_.begin(), toPhysical_.end(), 0);
    toLogical_ = toPhysical_;
    std::array<unsigned char, count> map{};
    const int known =
        std::min(XGetPointerMapping(display, map.data(), static_cast<int>(map.size())), static_cast<int>(count) - 1);
    // Backwards, so that of two switches with one meaning the lower one counts. 0 is a switch without a meaning.
    for (int physical = known; physical >= 1; --physical) {
        const int logical = map[static_cast<std::size_t>(physical) - 1];
        toLogical_[static_cast<std::size_t>(physical)] = logical;
        if (inRange(logical))
            toPhysical_[static_cast<std::size_t>(logical)] = physical;
    }
}

} // namespace tarvik
