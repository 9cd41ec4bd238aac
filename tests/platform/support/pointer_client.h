// A window that writes down what the pointer does in it.
#pragma once

#include "platform/linux/x11/x11_connection.h"
#include "support/geometry.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// One press or release of a button, or one turn of the wheel.
struct PointerSeen {
    enum class What { press, release, scroll } what = What::press;
    int button = 0;
    /// The slave device, which only an XInput 2 client learns.
    int source = 0;
    /// Device pixels of the root window.
    Point location;
    /// How far a scroll axis moved since the client last knew its value. Downwards and to the right, in the axis's own
    /// units.
    double scrolled = 0;
    bool horizontal = false;
};

/// Reads like a toolkit: an XInput 2 client takes scrolling from the axes and ignores the buttons that the server makes
/// of it; a core client gets those buttons.
class PointerClient {
public:
    enum class Protocol { xi2, core };

    /// Opens the window and waits until it can get events.
    PointerClient(Protocol protocol, const Rect& frame);

    Display* display() const { return x_->display(); }
    /// Whatever has happened since the last call. Waits for nothing.
    std::vector<PointerSeen> read();
    std::string deviceName(int source) const;
    /// Which buttons the server takes for down, as the bits of the core protocol's state (Button1Mask, ...).
    unsigned buttonsDown() const;

private:
    void note(XEvent& event, std::vector<PointerSeen>& all);
    void noteScrolling(const void* motion, std::vector<PointerSeen>& all);

    const std::unique_ptr<X11Connection> x_;
    const int opcode_;
    std::map<std::pair<int, int>, double> axisValues_;
};

} // namespace tarvik
