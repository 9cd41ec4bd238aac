// Every press of a button, whoever gets it.
#pragma once

#include "platform/linux/x11/x11_connection.h"

#include <optional>

namespace tarvik {

/// What a device did.
struct RawPress {
    int source = 0;
    /// The device's switch; see x11_button_map.h.
    int button = 0;
};

/// Raw events of the devices come also while the pointer is frozen for somebody's decision, and movement is not among
/// those that are asked for. Turns of the wheel do not count.
class PressWatch {
public:
    /// Nothing comes when the server lacks the X Input Extension 2.2.
    explicit PressWatch(const X11Connection& x);

    /// The next press of those that have been read or can be read without waiting.
    std::optional<RawPress> next();

private:
    Display* const display_;
    const std::optional<int> opcode_;
};

} // namespace tarvik
