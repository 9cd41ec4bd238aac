#include "platform/linux/x11/x11_scroll_devices.h"

#include "platform/linux/x11/x11_device_property.h"

#include <X11/Xatom.h>
#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string_view>

namespace tarvik {
namespace {

/// What drivers call the kinds of device that are touched rather than turned (X11/extensions/XI.h).
constexpr const char* touchedTypes[] = {XI_TOUCHPAD, XI_TOUCHSCREEN, XI_TABLET, "PAD", "STYLUS", "ERASER", "TOUCH"};

std::set<int> devicesOfTouchedTypes(Display* display) {
    std::set<Atom> types;
    for (const char* name : touchedTypes)
        types.insert(XInternAtom(display, name, True));
    types.erase(None);
    int count = 0;
    const auto release = [](XDeviceInfo* list) { XFreeDeviceList(list); };
    const std::unique_ptr<XDeviceInfo, decltype(release)> devices(XListInputDevices(display, &count), release);
    std::set<int> found;
    for (int i = 0; devices && i < count; ++i) {
        if (types.count(devices.get()[i].type) != 0)
            found.insert(static_cast<int>(devices.get()[i].id));
    }
    return found;
}

bool hasClass(const XIDeviceInfo& device, int type) {
    return std::any_of(device.classes, device.classes + device.num_classes,
                       [type](const XIAnyClassInfo* info) { return info->type == type; });
}

/// What a driver says only of a device with a touch surface: it can tap, or scroll with two fingers or at its edge.
bool scrollsByTouch(Display* display, int device) {
    if (!readDeviceBytes(display, device, XInternAtom(display, "libinput Tapping Enabled", True)).empty())
        return true;
    const auto methods =
        readDeviceBytes(display, device, XInternAtom(display, "libinput Scroll Methods Available", True));
    constexpr std::size_t twoFingers = 0;
    constexpr std::size_t edge = 1;
    return methods.size() > edge && (methods[twoFingers] != 0 || methods[edge] != 0);
}

} // namespace

bool WheelDevice::hasAxis(bool vertical) const {
    return std::any_of(axes.begin(), axes.end(),
                       [vertical](const ScrollAxis& axis) { return axis.vertical == vertical; });
}

Atom naturalScrollingProperty(Display* display) {
    return XInternAtom(display, "libinput Natural Scrolling Enabled", True);
}

std::vector<WheelDevice> wheelDevices(Display* display, const X11Devices& devices) {
    std::vector<WheelDevice> wheels;
    const auto touched = devicesOfTouchedTypes(display);
    const Atom natural = naturalScrollingProperty(display);
    auto axes = devices.scrollAxes();
    int count = 0;
    const auto release = [](XIDeviceInfo* list) { XIFreeDeviceInfo(list); };
    const std::unique_ptr<XIDeviceInfo, decltype(release)> all(XIQueryDevice(display, XIAllDevices, &count), release);
    for (int i = 0; all && i < count; ++i) {
        const auto& device = all.get()[i];
        if (device.use != XISlavePointer || touched.count(device.deviceid) != 0 || hasClass(device, XITouchClass) ||
            scrollsByTouch(display, device.deviceid))
            continue;
        wheels.push_back({device.deviceid, std::move(axes[device.deviceid]), hasClass(device, XIButtonClass),
                          !readDeviceBytes(display, device.deviceid, natural).empty()});
    }
    return wheels;
}

} // namespace tarvik
