#include "platform/linux/x11/x11_scroll_mirror.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvik {
namespace {

/// No hand turns so far between two looks: the device has counted anew.
constexpr double mostNotches = 10000;

/// The server makes no more than about twenty presses of one movement, for applications that know no axes.
constexpr double notchesAtOnce = 10;

constexpr int mostRefusals = 3;

/// The axis in a list of the device's axes; null when it is not there.
const ScrollAxis* find(const std::map<int, std::vector<ScrollAxis>>& all, int device, int number) {
    const auto axes = all.find(device);
    if (axes == all.end())
        return nullptr;
    const auto axis = std::find_if(axes->second.begin(), axes->second.end(),
                                   [number](const ScrollAxis& each) { return each.number == number; });
    return axis == axes->second.end() ? nullptr : &*axis;
}

} // namespace

void X11ScrollMirror::watch(const std::map<int, WheelAxes>& axes) {
    axes_.clear();
    turned_.clear();
    if (axes.empty())
        return;
    const auto now = devices_.scrollAxes();
    for (const auto& [device, wanted] : axes) {
        const auto found = now.find(device);
        if (found == now.end())
            continue;
        for (const auto& axis : found->second) {
            if (axis.vertical ? wanted.vertical : wanted.horizontal)
                axes_[device].push_back({axis});
        }
    }
}

void X11ScrollMirror::turned(const XiEvent& press) {
    const auto axes = axes_.find(press.source);
    const bool vertical = press.button <= 5;
    if (axes != axes_.end() && std::any_of(axes->second.begin(), axes->second.end(),
                                           [vertical](const Axis& axis) { return axis.info.vertical == vertical; }))
        turned_.insert(press.source);
}

void X11ScrollMirror::settle() {
    for (const int device : std::exchange(turned_, {})) {
        if (const auto axes = axes_.find(device); axes != axes_.end())
            settle(device, axes->second);
    }
}

void X11ScrollMirror::settle(int device, std::vector<Axis>& axes) {
    const auto now = devices_.scrollAxes(device);
    for (auto& axis : axes) {
        const auto* present = find(now, device, axis.info.number);
        if (!present)
            continue;
        const double byHand = present->value - axis.info.value - axis.moved;
        const double due = std::round(-2 * byHand - axis.moved);
        if (std::abs(due) > mostNotches * std::abs(axis.info.increment)) {
            axis = {*present};
        } else if (due != 0) {
            move(device, axis, due);
            checkThatFollows(device, axis, present->value);
        }
    }
    // What is due would grow with every look.
    std::erase_if(axes, [](const Axis& axis) { return axis.refusals == mostRefusals; });
}

void X11ScrollMirror::move(int device, Axis& axis, double by) {
    axis.moved += by;
    const double most = std::max(1.0, std::floor(notchesAtOnce * std::abs(axis.info.increment)));
    while (by != 0) {
        const double step = std::clamp(by, -most, most);
        devices_.fakeScroll(device, axis.info.number, static_cast<int>(step));
        by -= step;
    }
}

void X11ScrollMirror::checkThatFollows(int device, Axis& axis, double before) const {
    if (axis.follows)
        return;
    const auto now = devices_.scrollAxes(device);
    const auto* present = find(now, device, axis.info.number);
    axis.follows = present && present->value != before;
    axis.refusals += axis.follows ? 0 : 1;
}

void X11ScrollMirror::rebase() {
    turned_.clear();
    if (!watching())
        return;
    const auto now = devices_.scrollAxes();
    for (auto& [device, axes] : axes_) {
        for (auto& axis : axes) {
            if (const auto* present = find(now, device, axis.info.number))
                axis = {*present, 0, axis.follows};
        }
    }
}

} // namespace tarvik
