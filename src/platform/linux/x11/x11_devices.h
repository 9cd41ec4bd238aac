// The pointing devices of the server, for input that is put back as if the device itself had sent it.
#pragma once

#include "platform/linux/x11/x11_button_map.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>

#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tarvik {

/// A scroll axis of a device. Its value grows downwards, or to the right.
struct ScrollAxis {
    int number = 0;
    bool vertical = true;
    /// The change of the value that makes one notch.
    double increment = 1;
    /// What the value was when the list was read.
    double value = 0;
};

/// Tap's thread. A device that has gone has no axes and takes no input.
class X11Devices {
public:
    explicit X11Devices(Display* display) : display_(display) { buttons_.read(display); }

    /// Buttons here and in every event of a grab are those that the user means; see x11_button_map.h.
    const X11ButtonMap& buttons() const { return buttons_; }
    void mappingChanged() { buttons_.read(display_); }

    /// The scroll axes of every slave pointer, or of this one. One round trip.
    std::map<int, std::vector<ScrollAxis>> scrollAxes(std::optional<int> device = {}) const;
    /// Whether the user has inverted the device's scrolling ("natural scrolling"). One round trip.
    bool directionInverted(int source) const;

    /// One round trip.
    bool exists(int device) const;
    /// Whether the device is plugged in, switched on, and moves a pointer, or the pointer `master`. One round trip.
    bool serves(int device, std::optional<int> master = std::nullopt) const;

    /// Whether the session has one pointer, as almost every session. A round trip after a change of the devices.
    bool onePointer();
    /// What is down on the devices that move the pointer `master`: the device, and the button. One round trip.
    std::vector<std::pair<int, int>> buttonsDown(int master) const;

    /// Opens the device, so that a fake event of it is one request and asks nothing; a few round trips the first time.
    /// Answers the device that can put the pointer to an exact place: the device itself, or the server's own test
    /// pointer where the device's coordinates are not those of the screen (a tablet, a touch screen, a turned mouse) or
    /// it has been unplugged.
    int prepare(int source);
    /// The server's own pointing device of a master, or of the first one; other programs' fake input comes from it too.
    /// One round trip.
    std::optional<int> testPointer(std::optional<int> master = {}) const;
    /// Presses or releases a button as the device; with a place, the pointer goes there first, and the event reports
    /// its axes, which a press from a hand never does.
    void fakeButton(int source, int button, bool press, const int* place = nullptr);
    /// Turns a scroll axis as the device would.
    void fakeScroll(int source, int axis, int delta);
    /// The device, opened; null when it has gone. A round trip the first time.
    XDevice* device(int source) { return opened(source); }
    /// Forgets the devices that were opened; after the list of devices has changed.
    void forget() {
        opened_.clear();
        placed_.clear();
        pointers_.reset();
    }

private:
    struct Close {
        Display* display = nullptr;
        void operator()(XDevice* device) const;
    };
    XDevice* opened(int source);
    bool canPlacePointer(int source) const;

    Display* const display_;
    X11ButtonMap buttons_;
    std::map<int, std::unique_ptr<XDevice, Close>> opened_;
    std::map<int, int> placed_;
    std::optional<int> pointers_;
};

} // namespace tarvik
