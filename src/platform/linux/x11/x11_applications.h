// Which application a window belongs to.
#pragma once

#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/x11/x11_ewmh.h"
#include "ports/workspace.h"

#include <memory>
#include <optional>
#include <string>

namespace tarvik {

/// The desktop-file id of the window's application. A window whose application is not installed has the name that it
/// gives itself; nothing when it gives none. On the connection's thread.
std::optional<std::string> applicationId(const X11Connection& x, XWindow window, const DesktopEntries& entries);

/// What the user calls the window's application; nothing when it has no name.
std::optional<std::string> applicationName(const X11Connection& x, XWindow window, const DesktopEntries& entries);

class X11Workspace final : public Workspace {
public:
    X11Workspace(const X11Ewmh& ewmh, std::shared_ptr<const DesktopEntries> entries);
    bool frontmostIsTerminal() override;

private:
    const X11Ewmh& ewmh_;
    const std::shared_ptr<const DesktopEntries> entries_;
};

} // namespace tarvik
