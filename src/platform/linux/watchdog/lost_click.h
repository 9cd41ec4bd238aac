// The press that went to a tap which could not decide any more.
#pragma once

#include "platform/linux/watchdog/press_watch.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/x11_pointer_probe.h"

#include <optional>

namespace tarvik {

/// When the tap is ended, the server lets go of the pointer and of what it has kept back, but the press that the grab
/// has delivered is gone: the application gets a release without one. A click that is given back by the same device
/// mends that. It is given where it can be nothing else: the tap had the pointer, the button is up, and the pointer has
/// not moved away. What was to become a gesture, or is held down, is left alone.
class LostClick {
public:
    /// While the tap still has the pointer. A few round trips.
    LostClick(const X11Connection& x, const RawPress& press);

    /// After the tap's end; waits a second at most for the server and for the hand. True when the click was given back.
    bool giveBack();

private:
    std::optional<PointerState> pointer() const;

    const X11Connection& x_;
    X11Devices devices_;
    const X11PointerProbe probe_;
    const RawPress press_;
    const std::optional<int> master_;
    const bool taken_;
    const std::optional<PointerState> before_;
};

} // namespace tarvik
