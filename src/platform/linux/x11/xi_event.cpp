#include "platform/linux/x11/xi_event.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>

namespace tarvik {
namespace {

template <std::size_t n> void readMask(const unsigned char* mask, int length, std::bitset<n>& bits) {
    const int count = std::min<int>(static_cast<int>(n), length * 8);
    for (int i = 0; i < count; ++i)
        bits[static_cast<std::size_t>(i)] = XIMaskIsSet(mask, i);
}

void readAxes(const XIValuatorState& state, XiEvent& event) {
    const double* value = state.values;
    for (int axis = 0; axis < state.mask_len * 8; ++axis) {
        if (!XIMaskIsSet(state.mask, axis))
            continue;
        if (static_cast<std::size_t>(axis) < XiEvent::axisCount) {
            event.reported.set(static_cast<std::size_t>(axis));
            event.axes[static_cast<std::size_t>(axis)] = *value;
        }
        ++value;
    }
}

XiEvent fromDeviceEvent(const XIDeviceEvent& x, XiEventType type) {
    XiEvent event;
    event.type = type;
    event.button = x.detail;
    event.source = x.sourceid;
    event.master = x.deviceid;
    event.time = x.time;
    event.serial = x.serial;
    event.location = {x.root_x, x.root_y};
    event.emulated = (x.flags & XIPointerEmulated) != 0;
    readMask(x.buttons.mask, x.buttons.mask_len, event.buttonsBefore);
    readAxes(x.valuators, event);
    return event;
}

/// Raw events come once from the device and once from its master; the device's own is the one. Of the wheel the
/// master's is taken, which can be asked for by itself.
std::optional<XiEvent> fromRawEvent(const XIRawEvent& x, XiEventType type) {
    if (x.deviceid != x.sourceid) {
        if (!isWheelButton(x.detail))
            return std::nullopt;
        type = type == XiEventType::rawPress ? XiEventType::wheelTurned : XiEventType::wheelReleased;
    }
    XiEvent event;
    event.type = type;
    event.button = x.detail;
    event.source = x.sourceid;
    event.time = x.time;
    event.serial = x.serial;
    event.emulated = (x.flags & XIPointerEmulated) != 0;
    return event;
}

std::optional<XiEvent> fromCookie(const XGenericEventCookie& cookie) {
    const auto& device = *static_cast<const XIDeviceEvent*>(cookie.data);
    const auto& raw = *static_cast<const XIRawEvent*>(cookie.data);
    switch (cookie.evtype) {
    case XI_ButtonPress:
        return fromDeviceEvent(device, XiEventType::press);
    case XI_ButtonRelease:
        return fromDeviceEvent(device, XiEventType::release);
    case XI_Motion:
        return fromDeviceEvent(device, XiEventType::motion);
    case XI_RawButtonPress:
        return fromRawEvent(raw, XiEventType::rawPress);
    case XI_RawButtonRelease:
        return fromRawEvent(raw, XiEventType::rawRelease);
    case XI_HierarchyChanged: {
        XiEvent event;
        event.type = XiEventType::devicesChanged;
        return event;
    }
    case XI_PropertyEvent: {
        const auto& property = *static_cast<const XIPropertyEvent*>(cookie.data);
        XiEvent event;
        event.type = XiEventType::propertyChanged;
        event.source = property.deviceid;
        event.serial = property.serial;
        event.property = property.property;
        return event;
    }
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<int> xiOpcode(Display* display) {
    int opcode = 0;
    int firstEvent = 0;
    int firstError = 0;
    if (!XQueryExtension(display, "XInputExtension", &opcode, &firstEvent, &firstError))
        return std::nullopt;
    int major = 2;
    int minor = 2;
    if (XIQueryVersion(display, &major, &minor) != Success || major < 2 || (major == 2 && minor < 2))
        return std::nullopt;
    return opcode;
}

void selectDeviceEvents(Display* display, ::Window root, DeviceEvents events) {
    // One mask for both: a second one for the same window would replace the first.
    unsigned char bits[4] = {};
    XISetMask(bits, XI_HierarchyChanged);
    if (events == DeviceEvents::changesAndButtons) {
        XISetMask(bits, XI_RawButtonPress);
        XISetMask(bits, XI_RawButtonRelease);
    }
    XIEventMask mask{XIAllDevices, sizeof bits, bits};
    XISelectEvents(display, root, &mask, 1);
}

std::optional<XiEvent> nextXiEvent(Display* display, int opcode, XEvent& other) {
    XNextEvent(display, &other);
    auto& cookie = other.xcookie;
    if (other.type != GenericEvent || cookie.extension != opcode || !XGetEventData(display, &cookie))
        return std::nullopt;
    const auto event = fromCookie(cookie);
    XFreeEventData(display, &cookie);
    return event;
}

} // namespace tarvik
