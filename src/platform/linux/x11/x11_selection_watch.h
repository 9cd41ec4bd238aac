// Who stands for a service of the whole screen: the compositing manager, the tray.
#pragma once

#include "platform/linux/x11/x11_main_connection.h"

namespace tarvik {

/// Main thread. Such a service owns a selection that has the screen's number in its name (Inter-Client Communication
/// Conventions Manual, 2.8); the server reports each change of owner. Needs XFixes 1, else the answer is that of the
/// start.
class X11SelectionWatch {
public:
    /// `prefix` is the selection's name up to the number. `changed` is called from the connection's events, also when
    /// one owner takes the place of another.
    X11SelectionWatch(X11MainConnection& connection, const char* prefix, std::function<void()> changed);
    X11SelectionWatch(const X11SelectionWatch&) = delete;
    X11SelectionWatch& operator=(const X11SelectionWatch&) = delete;

    bool owned() const { return owned_; }

private:
    void handle(const xcb_generic_event_t& event);

    X11MainConnection& connection_;
    std::function<void()> changed_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    bool owned_ = false;
    std::shared_ptr<void> events_;
};

} // namespace tarvik
