#include "platform/linux/x11/x11_wheel_reversal.h"

#include "platform/linux/x11/x11_scroll_devices.h"
#include "platform/linux/x11/x11_scroll_setting.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <utility>

namespace tarvik {
namespace {

using Kind = X11ScrollSetting::Kind;

} // namespace

X11WheelReversal::X11WheelReversal(Display* display, ::Window root, X11Devices& devices)
    : display_(display), root_(root), devices_(devices), mirror_(display, devices) {}

X11WheelReversal::~X11WheelReversal() {
    set({});
    XSync(display_, False);
}

void X11WheelReversal::set(WheelAxes axes) {
    if (applied_ && axes == axes_)
        return;
    axes_ = axes;
    applied_ = true;
    apply();
}

void X11WheelReversal::devicesChanged() {
    if (axes_ != WheelAxes{})
        apply();
}

void X11WheelReversal::apply() {
    settings_.clear();
    std::map<int, WheelAxes> mirrored;
    for (const auto& device : wheelDevices(display_, devices_)) {
        auto& settings = settings_[device.id];
        if (device.hasNaturalScrolling) {
            // The horizontal axis goes along with the vertical one; where that is not wanted it is turned back.
            settings.naturalScrolling = axes_.vertical;
            watchProperties(device.id, axes_.vertical);
            reverseNaturalScrolling(device.id);
            mirrored[device.id] = {false, axes_.vertical != axes_.horizontal};
        } else {
            mirrored[device.id] = axes_;
        }
        if (device.hasButtons) {
            const auto axes = device.hasNaturalScrolling ? WheelAxes{} : axes_;
            settings.buttonMap =
                WheelAxes{axes.vertical && !device.hasAxis(true), axes.horizontal && !device.hasAxis(false)};
        }
    }
    mirror_.watch(mirrored);
    mapButtons();
}

void X11WheelReversal::wheelReleased() {
    if (wheelWatched_.second)
        mapButtons();
}

void X11WheelReversal::mapButtons() {
    const bool mapped = tryToMapButtons();
    watchWheel(mirror_.watching(), !mapped);
    // The release may have come before we were to be told of it.
    if (!mapped && tryToMapButtons())
        watchWheel(mirror_.watching(), false);
}

bool X11WheelReversal::tryToMapButtons() const {
    bool mapped = true;
    for (const auto& [device, settings] : settings_) {
        const X11ScrollSetting setting(display_, devices_, device, Kind::buttonMap);
        if (settings.buttonMap && setting.reverse(*settings.buttonMap).refused)
            mapped = false;
    }
    return mapped;
}

void X11WheelReversal::reverseNaturalScrolling(int device) {
    const X11ScrollSetting setting(display_, devices_, device, Kind::naturalScrolling);
    if (const auto request = setting.reverse({axes_.vertical, axes_.vertical}).request)
        ownChanges_.push_back(*request);
}

void X11WheelReversal::propertyChanged(const XiEvent& event) {
    while (!ownChanges_.empty() && ownChanges_.front() < event.serial)
        ownChanges_.pop_front();
    if (event.property != naturalScrollingProperty(display_))
        return;
    // The server reports what a request changes before it reads the next one; a second change with the same serial
    // number is another program's.
    if (!ownChanges_.empty() && ownChanges_.front() == event.serial) {
        ownChanges_.pop_front();
        return;
    }
    if (!axes_.vertical)
        return;
    X11ScrollSetting(display_, devices_, event.source, Kind::naturalScrolling).adopt();
    reverseNaturalScrolling(event.source);
}

bool X11WheelReversal::turnsRound(int device, bool vertical) const {
    const auto setting = settings_.find(device);
    if (setting == settings_.end())
        return false;
    const auto& [naturalScrolling, buttonMap] = setting->second;
    const auto mapped = buttonMap.value_or(WheelAxes{});
    return naturalScrolling || (vertical ? mapped.vertical : mapped.horizontal);
}

bool X11WheelReversal::driverTurnsRound(int device) const {
    const auto setting = settings_.find(device);
    return setting != settings_.end() && setting->second.naturalScrolling;
}

void X11WheelReversal::watchProperties(int device, bool watch) const {
    unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
    if (watch)
        XISetMask(bits, XI_PropertyEvent);
    XIEventMask mask{device, sizeof bits, bits};
    XISelectEvents(display_, root_, &mask, 1);
}

void X11WheelReversal::watchWheel(bool presses, bool releases) {
    const std::pair wanted(presses, releases);
    if (std::exchange(wheelWatched_, wanted) == wanted)
        return;
    // The masters' copies of raw events: the selection for all devices is another one and may change on its own.
    unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
    if (presses)
        XISetMask(bits, XI_RawButtonPress);
    if (releases)
        XISetMask(bits, XI_RawButtonRelease);
    XIEventMask mask{XIAllMasterDevices, sizeof bits, bits};
    XISelectEvents(display_, root_, &mask, 1);
}

} // namespace tarvik
