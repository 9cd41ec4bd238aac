// Which application is active, known before anyone asks.
#pragma once

#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/x11/x11_ewmh.h"
#include "ports/workspace.h"

#include <memory>
#include <optional>
#include <string>

namespace tarvik {

/// Follows the window manager's active window on the tap's own connection, so that an event and the application it
/// belongs to arrive in order, and a press asks nobody. Tap's thread.
class X11Frontmost final : public Frontmost {
public:
    explicit X11Frontmost(std::shared_ptr<const DesktopEntries> entries);

    /// Begins to watch. The connection must outlive every later call but the destructor.
    void watch(const X11Connection& x);
    /// For every core event of the connection.
    void handle(const XEvent& event);

    std::optional<std::string> frontmostApplication() const override { return application_; }

private:
    void read();

    const std::shared_ptr<const DesktopEntries> entries_;
    std::unique_ptr<X11Ewmh> ewmh_;
    std::optional<std::string> application_;
};

} // namespace tarvik
