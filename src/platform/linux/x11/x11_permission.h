// Whether this display shows Tarvik the mouse in every window.
#pragma once

#include "ports/permission.h"
#include "support/log.h"

#include <functional>
#include <string>

namespace tarvik {

/// X11 asks nobody for permission, but not every server can serve: it takes XInput 2.2 for the tap, XTEST for what is
/// given back, and a server that sees all windows. One inside a Wayland session, which has the extension XWAYLAND, sees
/// only those of X11 programs. None of this changes while a server runs.
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
