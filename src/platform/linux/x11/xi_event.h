// Events of the X Input Extension, as values.
#pragma once

#include "support/geometry.h"

#include <X11/Xlib.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>

namespace tarvik {

enum class XiEventType : std::uint8_t {
    press,
    release,
    motion,
    rawPress,
    rawRelease,
    /// A raw press, or release, of a wheel's button, made by the server or by the device; see X11WheelReversal.
    wheelTurned,
    wheelReleased,
    devicesChanged,
    /// A property of the device `source`.
    propertyChanged
};

/// By number, which is a byte.
using XiButtons = std::bitset<256>;

/// What the tap needs of one event. `raw...` events are what a device did, whoever gets to see it.
struct XiEvent {
    static constexpr std::size_t axisCount = 16;

    XiEventType type = XiEventType::motion;
    /// As X counts: 1 left, 2 middle, 3 right, 4 to 7 the wheel. Of raw events the device's switch; see
    /// x11_button_map.h.
    int button = 0;
    /// The slave device that it comes from, and the master whose pointer it moves.
    int source = 0;
    int master = 0;
    /// The server's clock: milliseconds that wrap after 49.7 days.
    Time time = 0;
    /// Of the last request of ours that the server had carried out.
    unsigned long serial = 0;
    /// Device pixels of the root window.
    Point location;
    /// Made by the server from another event (a wheel's button from its axis).
    bool emulated = false;
    /// Buttons down before this event.
    XiButtons buttonsBefore;
    Atom property = None;
    /// The axes that the event reports, with their absolute values.
    std::bitset<axisCount> reported;
    std::array<double, axisCount> axes{};

    bool reportsPosition() const { return reported[0] && reported[1]; }
};

/// Buttons that a wheel presses for applications that know no axes.
constexpr bool isWheelButton(int button) { return button >= 4 && button <= 7; }

/// Which events of the X Input Extension the server sends with this code. Nothing when it lacks version 2.2.
std::optional<int> xiOpcode(Display* display);

/// Which events of all devices come besides those of our grabs.
enum class DeviceEvents : std::uint8_t { changes, changesAndButtons };
/// `changes`: devices come and go. `changesAndButtons`: also every press and release, whoever gets it.
void selectDeviceEvents(Display* display, ::Window root, DeviceEvents events);

/// The value of the next event of the queue if it is one that the tap knows; takes the event out either way. Only while
/// XPending says that there is one.
std::optional<XiEvent> nextXiEvent(Display* display, int opcode, XEvent& other);

} // namespace tarvik
