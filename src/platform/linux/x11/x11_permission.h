// Whether this display shows Tarvik the mouse in every window.
#pragma once

#include "ports/permission.h"
#include "support/log.h"

#include <X11/Xlib.h>

#include <functional>
#include <string>

namespace tarvik {

/// Not every server can serve: it takes XInput 2.2 for the tap, XTEST for what is given back, and a server that sees
/// all windows. One inside a Wayland session, which has the extension XWAYLAND, sees only those of X11 programs. What
/// stands in the way, as in "gestures need XTEST"; empty for nothing. The tap and the permission ask the same.
std::string missingOn(Display* display);

/// X11 asks nobody for permission; whether its server can serve does not change while it runs.
class X11Permission final : public Permission {
public:
    /// `openGuide` shows the user how to get another session.
    X11Permission(LogSink& log, std::function<void()> openGuide);

    bool trusted() override { return missing_.empty(); }
    /// There is nobody to ask.
    bool request() override { return trusted(); }
    void openSettings() override { openGuide_(); }

private:
    /// What stands in the way, for the log; empty for nothing.
    const std::string missing_;
    const std::function<void()> openGuide_;
};

} // namespace tarvik
