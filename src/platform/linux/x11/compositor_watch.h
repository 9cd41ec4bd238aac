// Is there a compositing manager, without which a translucent window would be black?
#pragma once

#include "platform/linux/x11/x11_main_connection.h"

namespace tarvik {

/// Main thread. A compositing manager owns the selection _NET_WM_CM_Sn of its screen (Extended Window Manager Hints);
/// the server reports each change of owner. Needs XFixes 1, else the answer is that of the start.
class CompositorWatch {
public:
    /// `changed` is called from the connection's events, also when one compositing manager takes the place of another.
    CompositorWatch(X11MainConnection& connection, std::function<void()> changed);
    CompositorWatch(const CompositorWatch&) = delete;
    CompositorWatch& operator=(const CompositorWatch&) = delete;

    bool running() const { return running_; }

private:
    void handle(const xcb_generic_event_t& event);

    X11MainConnection& connection_;
    std::function<void()> changed_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    bool running_ = false;
    std::shared_ptr<void> events_;
};

} // namespace tarvik
