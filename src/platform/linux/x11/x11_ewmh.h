// The window manager and its windows, through the ICCCM and the Extended Window Manager Hints.
#pragma once

#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_desktop_grid.h"
#include "support/geometry.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tarvik {

enum class WindowKind : std::uint8_t { normal, dialog, desktop, dock, other };

/// Everything is asked of the server at the moment of the call. Windows that are gone have no properties.
class X11Ewmh {
public:
    explicit X11Ewmh(const X11Connection& x) : x_(x) {}

    const X11Connection& connection() const { return x_; }

    /// Whether a window manager runs that keeps the hints. (The properties of one that crashed stay on the root
    /// window.)
    bool managed() const;
    /// Whether the running window manager announces the hint.
    bool supports(Atom hint) const;

    /// Oldest first.
    std::vector<XWindow> clients() const;
    /// Topmost last.
    std::vector<XWindow> stacking() const;
    std::optional<XWindow> activeWindow() const;
    std::optional<std::uint32_t> currentDesktop() const;
    std::optional<std::uint32_t> desktopCount() const;
    std::optional<DesktopLayout> desktopLayout() const;
    bool showingDesktop() const;

    WindowKind kind(XWindow window) const;
    /// Neither a panel nor the desktop's own window.
    bool isApplicationWindow(XWindow window) const;
    bool hasState(XWindow window, Atom state) const;
    bool isMinimized(XWindow window) const;
    /// On the current desktop or on all of them.
    bool isOnCurrentDesktop(XWindow window) const;
    bool isViewable(XWindow window) const;
    /// Whether the window manager lets the user do it; true where it does not say.
    bool allows(XWindow window, Atom action) const;
    /// With the window manager's decorations and without the shadow that an application draws itself; device pixels,
    /// root coordinates. Nothing when the window is gone.
    std::optional<Rect> frame(XWindow window) const;

    /// What the requests answer is 0 or the code of the error; a request that the window manager ignores is no error.
    int setCurrentDesktop(std::uint32_t desktop) const;
    int showDesktop(bool show) const;
    int activate(XWindow window) const;
    int close(XWindow window) const;
    int minimize(XWindow window) const;
    int setState(XWindow window, Atom state, bool on) const;

private:
    int send(XWindow window, Atom message, const std::array<long, 5>& data) const;

    const X11Connection& x_;
};

} // namespace tarvik
