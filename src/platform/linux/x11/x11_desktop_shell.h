// What an X11 desktop can do by itself: through the window manager's hints, and over the session bus.
#pragma once

#include "platform/linux/common/dbus_shell.h"
#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/x11/x11_ewmh.h"
#include "ports/desktop_shell.h"
#include "support/log.h"

#include <functional>
#include <memory>
#include <vector>

namespace tarvik {

/// An action counts as taken when the window manager announces what it needs, also where there is nothing to do (no
/// desktop on that side, no other window).
class X11DesktopShell final : public DesktopShell {
public:
    X11DesktopShell(const X11Ewmh& ewmh, std::shared_ptr<const DesktopEntries> entries, LogSink& log);
    bool perform(ActionKind kind) override;

private:
    bool changeDesktop(int step);
    bool showDesktop();
    /// The application's windows on the current desktop in the order in which they appeared, round and round.
    bool changeWindow(int step);
    /// The application whose window is the topmost of the others; windows that stay on top or below by themselves come
    /// last.
    bool changeApplication();
    bool closeWindow();
    bool hideApplication();

    bool supportsAll(std::initializer_list<Atom> hints) const;
    /// The active window; nothing when it belongs to the desktop itself.
    std::optional<XWindow> activeWindow() const;
    /// Whether the user would switch to the window.
    bool isCandidate(XWindow window) const;
    std::function<bool(XWindow)> sameApplicationAs(XWindow window) const;
    void activate(XWindow window);

    const X11Ewmh& ewmh_;
    const X11Atoms& atoms_;
    const std::shared_ptr<const DesktopEntries> entries_;
    LogSink& log_;
    DBusShell bus_;
};

} // namespace tarvik
