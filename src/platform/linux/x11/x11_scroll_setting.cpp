#include "platform/linux/x11/x11_scroll_setting.h"

#include "platform/linux/x11/x11_device_property.h"
#include "platform/linux/x11/x11_scroll_devices.h"

#include <X11/extensions/XInput2.h>

#include <array>
#include <utility>

namespace tarvik {
namespace {

constexpr std::size_t maxButtons = 256;

unsigned char swapped(unsigned char button, std::pair<unsigned char, unsigned char> both) {
    return button == both.first ? both.second : button == both.second ? both.first : button;
}

} // namespace

X11ScrollSetting::Change X11ScrollSetting::reverse(WheelAxes axes) const {
    const auto present = read();
    if (present.empty())
        return {};
    const auto before = usersOwn(present);
    const auto wanted = turned(before, axes);
    // The property first: there is no moment in which a crash would lose the user's value.
    if (wanted != before) {
        auto both = before;
        both.insert(both.end(), wanted.begin(), wanted.end());
        if (readDeviceBytes(display_, device_, memory()) != both)
            writeDeviceBytes(display_, device_, memory(), both);
    }
    Change change;
    if (wanted != present) {
        change.request = NextRequest(display_);
        change.refused = !write(wanted);
    }
    if (wanted == before && !change.refused)
        adopt();
    return change;
}

void X11ScrollSetting::adopt() const { XIDeleteProperty(display_, device_, memory()); }

Atom X11ScrollSetting::memory() const {
    return XInternAtom(display_,
                       kind_ == Kind::naturalScrolling ? "Tarvik Natural Scrolling Before" : "Tarvik Button Map Before",
                       False);
}

X11ScrollSetting::Bytes X11ScrollSetting::read() const {
    if (kind_ == Kind::naturalScrolling)
        return readDeviceBytes(display_, device_, naturalScrollingProperty(display_));
    auto* device = devices_.device(device_);
    std::array<unsigned char, maxButtons> map{};
    const int count = device ? XGetDeviceButtonMapping(display_, device, map.data(), map.size()) : 0;
    return count > 0 ? Bytes(map.begin(), map.begin() + count) : Bytes();
}

bool X11ScrollSetting::write(const Bytes& value) const {
    if (kind_ == Kind::naturalScrolling) {
        writeDeviceBytes(display_, device_, naturalScrollingProperty(display_), value);
        return true;
    }
    auto map = value;
    auto* device = devices_.device(device_);
    return !device ||
           XSetDeviceButtonMapping(display_, device, map.data(), static_cast<int>(map.size())) != MappingBusy;
}

X11ScrollSetting::Bytes X11ScrollSetting::usersOwn(const Bytes& present) const {
    const auto both = readDeviceBytes(display_, device_, memory());
    const auto size = static_cast<Bytes::difference_type>(present.size());
    // Something else than what we wrote has been set by somebody else since.
    if (both.size() != 2 * present.size() || Bytes(both.begin() + size, both.end()) != present)
        return present;
    return {both.begin(), both.begin() + size};
}

X11ScrollSetting::Bytes X11ScrollSetting::turned(Bytes value, WheelAxes axes) const {
    for (auto& byte : value) {
        if (kind_ == Kind::naturalScrolling) {
            byte = static_cast<unsigned char>((byte != 0) != axes.vertical);
        } else {
            if (axes.vertical)
                byte = swapped(byte, {4, 5});
            if (axes.horizontal)
                byte = swapped(byte, {6, 7});
        }
    }
    return value;
}

} // namespace tarvik
