#include "platform/linux/x11/x11_devices.h"

#include "platform/linux/x11/x11_error_trap.h"

#include <X11/Xatom.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tarvik {
namespace {

struct FreeDeviceInfo {
    void operator()(XIDeviceInfo* info) const { XIFreeDeviceInfo(info); }
};

std::vector<ScrollAxis> axesOf(const XIDeviceInfo& device) {
    std::vector<ScrollAxis> axes;
    for (int i = 0; i < device.num_classes; ++i) {
        if (device.classes[i]->type != XIScrollClass)
            continue;
        const auto& scroll = *reinterpret_cast<const XIScrollClassInfo*>(device.classes[i]);
        if (scroll.increment != 0)
            axes.push_back({scroll.number, scroll.scroll_type == XIScrollTypeVertical, scroll.increment, 0});
    }
    for (int i = 0; i < device.num_classes; ++i) {
        if (device.classes[i]->type != XIValuatorClass)
            continue;
        const auto& valuator = *reinterpret_cast<const XIValuatorClassInfo*>(device.classes[i]);
        for (auto& axis : axes) {
            if (axis.number == valuator.number)
                axis.value = valuator.value;
        }
    }
    return axes;
}

/// Whether the server leaves the device's positions as they are.
bool hasIdentityMatrix(Display* display, int source) {
    const Atom property = XInternAtom(display, "Coordinate Transformation Matrix", True);
    const Atom floatType = XInternAtom(display, "FLOAT", True);
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    if (property == None || XIGetProperty(display, source, property, 0, 9, False, floatType, &type, &format, &count,
                                          &left, &data) != Success)
        return true;
    static constexpr float identity[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const bool same = type != floatType || format != 32 || count != 9 ||
                      std::equal(std::begin(identity), std::end(identity), reinterpret_cast<const float*>(data));
    if (data)
        XFree(data);
    return same;
}

} // namespace

std::map<int, std::vector<ScrollAxis>> X11Devices::scrollAxes(std::optional<int> only) const {
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, FreeDeviceInfo> devices(
        XIQueryDevice(display_, only.value_or(XIAllDevices), &count));
    std::map<int, std::vector<ScrollAxis>> axes;
    for (int i = 0; devices && i < count; ++i) {
        const auto& device = devices.get()[i];
        if (device.use == XISlavePointer)
            axes.emplace(device.deviceid, axesOf(device));
    }
    return axes;
}

bool X11Devices::directionInverted(int source) const {
    const Atom property = XInternAtom(display_, "libinput Natural Scrolling Enabled", True);
    if (property == None)
        return false;
    const X11ErrorTrap vanishedDevice(display_);
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    const bool got = XIGetProperty(display_, source, property, 0, 1, False, XA_INTEGER, &type, &format, &count, &left,
                                   &data) == Success;
    const bool inverted = got && type == XA_INTEGER && format == 8 && count > 0 && data[0] != 0;
    if (data)
        XFree(data);
    return inverted;
}

int X11Devices::prepare(int source) {
    const auto known = placed_.find(source);
    if (known != placed_.end())
        return known->second;
    const int device = canPlacePointer(source) ? source : testPointer().value_or(source);
    opened(source);
    opened(device);
    return placed_.emplace(source, device).first->second;
}

bool X11Devices::exists(int device) const {
    const X11ErrorTrap vanishedDevice(display_);
    int count = 0;
    return std::unique_ptr<XIDeviceInfo, FreeDeviceInfo>(XIQueryDevice(display_, device, &count)) != nullptr;
}

bool X11Devices::serves(int device, std::optional<int> master) const {
    const X11ErrorTrap vanishedDevice(display_);
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, FreeDeviceInfo> info(XIQueryDevice(display_, device, &count));
    return info && info->enabled && info->use == XISlavePointer &&
           info->attachment == master.value_or(info->attachment);
}

std::vector<std::pair<int, int>> X11Devices::buttonsDown(int master) const {
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, FreeDeviceInfo> devices(XIQueryDevice(display_, XIAllDevices, &count));
    std::vector<std::pair<int, int>> down;
    for (int i = 0; devices && i < count; ++i) {
        const auto& device = devices.get()[i];
        if (device.use != XISlavePointer || device.attachment != master)
            continue;
        for (int j = 0; j < device.num_classes; ++j) {
            if (device.classes[j]->type != XIButtonClass)
                continue;
            const auto& state = reinterpret_cast<const XIButtonClassInfo*>(device.classes[j])->state;
            for (int button = 1; button < 8 * state.mask_len; ++button) {
                if (XIMaskIsSet(state.mask, button))
                    down.emplace_back(device.deviceid, buttons_.logical(button));
            }
        }
    }
    return down;
}

bool X11Devices::onePointer() {
    if (!pointers_) {
        int count = 0;
        const std::unique_ptr<XIDeviceInfo, FreeDeviceInfo> masters(
            XIQueryDevice(display_, XIAllMasterDevices, &count));
        const auto* first = masters.get();
        pointers_ =
            static_cast<int>(std::count_if(first, first + (masters ? count : 0),
                                           [](const XIDeviceInfo& device) { return device.use == XIMasterPointer; }));
    }
    return *pointers_ == 1;
}

bool X11Devices::canPlacePointer(int source) const {
    const X11ErrorTrap vanishedDevice(display_);
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, FreeDeviceInfo> device(XIQueryDevice(display_, source, &count));
    if (!device || !device->enabled || device->use != XISlavePointer)
        return false;
    for (int i = 0; i < device->num_classes; ++i) {
        const auto& axis = *reinterpret_cast<const XIValuatorClassInfo*>(device->classes[i]);
        if (axis.type == XIValuatorClass && axis.number <= 1 && axis.mode == XIModeAbsolute)
            return false;
    }
    return hasIdentityMatrix(display_, source);
}

std::optional<int> X11Devices::testPointer(std::optional<int> master) const {
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, FreeDeviceInfo> devices(XIQueryDevice(display_, XIAllDevices, &count));
    for (int i = 0; devices && i < count; ++i) {
        const auto& device = devices.get()[i];
        if (device.use == XISlavePointer && device.attachment == master.value_or(device.attachment) &&
            std::string_view(device.name).find("XTEST") != std::string_view::npos)
            return device.deviceid;
    }
    return std::nullopt;
}

void X11Devices::fakeButton(int source, int button, bool press, const int* place) {
    auto* device = opened(source);
    if (!device)
        return;
    int axes[2] = {place ? place[0] : 0, place ? place[1] : 0};
    XTestFakeDeviceButtonEvent(display_, device, static_cast<unsigned>(buttons_.physical(button)), press,
                               place ? axes : nullptr, place ? 2 : 0, CurrentTime);
}

void X11Devices::fakeScroll(int source, int axis, int delta) {
    auto* device = opened(source);
    if (!device)
        return;
    // The server takes the axes from the first one on only: the others do not move.
    std::vector<int> axes(static_cast<std::size_t>(axis) + 1, 0);
    axes.back() = delta;
    XTestFakeDeviceMotionEvent(display_, device, True, 0, axes.data(), static_cast<int>(axes.size()), CurrentTime);
}

XDevice* X11Devices::opened(int source) {
    const auto known = opened_.find(source);
    if (known != opened_.end())
        return known->second.get();
    const X11ErrorTrap vanishedDevice(display_);
    return opened_
        .emplace(source, std::unique_ptr<XDevice, Close>(XOpenDevice(display_, static_cast<XID>(source)), {display_}))
        .first->second.get();
}

void X11Devices::Close::operator()(XDevice* device) const { XCloseDevice(display, device); }

} // namespace tarvik
