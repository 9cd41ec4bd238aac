// The settings of a device that turn its wheel round without our help.
#pragma once

#include "platform/linux/x11/x11_devices.h"
#include "ports/event_tap.h"

#include <optional>
#include <vector>

namespace tarvik {

/// Changes one setting of one device and puts it back. What the user had is kept in a property of the same device,
/// which lives exactly as long as the device does: whoever starts after a crash finds it there. Holds nothing itself. A
/// device that has gone has no settings. Tap's thread.
class X11ScrollSetting {
public:
    enum class Kind {
        /// The driver's natural scrolling: exact for every application, both axes at once.
        naturalScrolling,
        /// Which button a switch of the device is: exact where buttons are all that a wheel has.
        buttonMap
    };

    X11ScrollSetting(Display* display, X11Devices& devices, int device, Kind kind)
        : display_(display), devices_(devices), device_(device), kind_(kind) {}

    struct Change {
        /// The request that made it, if there was anything to change.
        std::optional<unsigned long> request;
        /// The server changes nothing while a button that it is about is down.
        bool refused = false;
    };
    /// Makes the setting the user's own, turned round in these axes; natural scrolling heeds only `vertical`.
    Change reverse(WheelAxes axes) const;
    /// From now on the present value is the user's own: somebody else has set it.
    void adopt() const;

private:
    using Bytes = std::vector<unsigned char>;

    Atom memory() const;
    Bytes read() const;
    /// Whether the server takes it.
    bool write(const Bytes& value) const;
    Bytes usersOwn(const Bytes& present) const;
    Bytes turned(Bytes value, WheelAxes axes) const;

    Display* const display_;
    X11Devices& devices_;
    const int device_;
    const Kind kind_;
};

} // namespace tarvik
