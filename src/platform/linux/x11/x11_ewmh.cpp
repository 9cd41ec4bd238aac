#include "platform/linux/x11/x11_ewmh.h"

#include "platform/linux/x11/x11_error_trap.h"
#include "platform/linux/x11/x11_property.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <algorithm>

namespace tarvik {
namespace {

constexpr unsigned long allDesktops = 0xFFFFFFFF;
constexpr unsigned long tooWide = 10'000; // no decoration, whatever the property says
constexpr long fromPager = 2;             // source indication: the user's direct request

bool contains(const std::vector<unsigned long>& items, unsigned long item) {
    return std::find(items.begin(), items.end(), item) != items.end();
}

/// left, right, top, bottom; zeros when there is no such property.
std::array<double, 4> extents(const X11Connection& x, XWindow window, Atom property) {
    const auto items = readItems(x, window, property, XA_CARDINAL, 4);
    std::array<double, 4> sides = {};
    if (items.size() == 4 && std::all_of(items.begin(), items.end(), [](auto width) { return width < tooWide; }))
        std::copy(items.begin(), items.end(), sides.begin());
    return sides;
}

} // namespace

bool X11Ewmh::managed() const {
    const auto check = readItem(x_, x_.root(), x_.atoms().supportingWmCheck, XA_WINDOW);
    return check && readItem(x_, *check, x_.atoms().supportingWmCheck, XA_WINDOW) == check;
}

bool X11Ewmh::supports(Atom hint) const {
    return contains(readItems(x_, x_.root(), x_.atoms().supported, XA_ATOM), hint) && managed();
}

std::vector<XWindow> X11Ewmh::clients() const { return readItems(x_, x_.root(), x_.atoms().clientList, XA_WINDOW); }

std::vector<XWindow> X11Ewmh::stacking() const {
    return readItems(x_, x_.root(), x_.atoms().clientListStacking, XA_WINDOW);
}

std::optional<XWindow> X11Ewmh::activeWindow() const {
    const auto window = readItem(x_, x_.root(), x_.atoms().activeWindow, XA_WINDOW);
    return window == XWindow{None} ? std::nullopt : window;
}

std::optional<std::uint32_t> X11Ewmh::currentDesktop() const {
    return readItem(x_, x_.root(), x_.atoms().currentDesktop, XA_CARDINAL);
}

std::optional<std::uint32_t> X11Ewmh::desktopCount() const {
    return readItem(x_, x_.root(), x_.atoms().numberOfDesktops, XA_CARDINAL);
}

std::optional<DesktopLayout> X11Ewmh::desktopLayout() const {
    return desktopLayoutFrom(readItems(x_, x_.root(), x_.atoms().desktopLayout, XA_CARDINAL, 4));
}

bool X11Ewmh::showingDesktop() const {
    return readItem(x_, x_.root(), x_.atoms().showingDesktop, XA_CARDINAL).value_or(0) != 0;
}

WindowKind X11Ewmh::kind(XWindow window) const {
    const auto& atoms = x_.atoms();
    // The first type that is known counts; an application may put types of its own before it.
    for (const auto type : readItems(x_, window, atoms.windowType, XA_ATOM, 16)) {
        if (type == atoms.typeNormal)
            return WindowKind::normal;
        if (type == atoms.typeDialog)
            return WindowKind::dialog;
        if (type == atoms.typeDesktop)
            return WindowKind::desktop;
        if (type == atoms.typeDock)
            return WindowKind::dock;
    }
    if (readItem(x_, window, atoms.windowType, XA_ATOM))
        return WindowKind::other;
    return readItem(x_, window, XA_WM_TRANSIENT_FOR, XA_WINDOW) ? WindowKind::dialog : WindowKind::normal;
}

bool X11Ewmh::isApplicationWindow(XWindow window) const {
    const auto found = kind(window);
    return found != WindowKind::desktop && found != WindowKind::dock;
}

bool X11Ewmh::hasState(XWindow window, Atom state) const {
    return contains(readItems(x_, window, x_.atoms().wmStateList, XA_ATOM), state);
}

bool X11Ewmh::isMinimized(XWindow window) const {
    // WM_STATE alone does not tell: window managers call windows on other desktops iconic too.
    if (supports(x_.atoms().stateHidden))
        return hasState(window, x_.atoms().stateHidden);
    return readItem(x_, window, x_.atoms().wmState, x_.atoms().wmState) == unsigned{IconicState};
}

bool X11Ewmh::isOnCurrentDesktop(XWindow window) const {
    const auto desktop = readItem(x_, window, x_.atoms().wmDesktop, XA_CARDINAL);
    const auto current = currentDesktop();
    return !desktop || !current || desktop == allDesktops || *desktop == *current;
}

bool X11Ewmh::isViewable(XWindow window) const {
    XWindowAttributes attributes = {};
    return XGetWindowAttributes(x_.display(), window, &attributes) != 0 && attributes.map_state == IsViewable;
}

bool X11Ewmh::allows(XWindow window, Atom action) const {
    const auto allowed = readItems(x_, window, x_.atoms().wmAllowedActions, XA_ATOM);
    return allowed.empty() || contains(allowed, action);
}

std::optional<Rect> X11Ewmh::frame(XWindow window) const {
    XWindow root = None;
    XWindow child = None;
    int x = 0;
    int y = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    if (!XGetGeometry(x_.display(), window, &root, &x, &y, &width, &height, &border, &depth) ||
        !XTranslateCoordinates(x_.display(), window, root, 0, 0, &x, &y, &child))
        return std::nullopt;
    const auto [left, right, top, bottom] = extents(x_, window, x_.atoms().frameExtents);
    const auto [leftShadow, rightShadow, topShadow, bottomShadow] = extents(x_, window, x_.atoms().gtkFrameExtents);
    return Rect{x - left + leftShadow, y - top + topShadow, width + left + right - leftShadow - rightShadow,
                height + top + bottom - topShadow - bottomShadow};
}

int X11Ewmh::setCurrentDesktop(std::uint32_t desktop) const {
    return send(x_.root(), x_.atoms().currentDesktop, {desktop, CurrentTime});
}

int X11Ewmh::showDesktop(bool show) const { return send(x_.root(), x_.atoms().showingDesktop, {show ? 1 : 0}); }

int X11Ewmh::activate(XWindow window) const {
    return send(window, x_.atoms().activeWindow,
                {fromPager, CurrentTime, static_cast<long>(activeWindow().value_or(None))});
}

int X11Ewmh::close(XWindow window) const { return send(window, x_.atoms().closeWindow, {CurrentTime, fromPager}); }

int X11Ewmh::minimize(XWindow window) const { return send(window, x_.atoms().wmChangeState, {IconicState}); }

int X11Ewmh::setState(XWindow window, Atom state, bool on) const {
    return send(window, x_.atoms().wmStateList, {on ? 1 : 0, static_cast<long>(state), 0, fromPager});
}

int X11Ewmh::send(XWindow window, Atom message, const std::array<long, 5>& data) const {
    X11ErrorTrap trap(x_.display());
    // The message goes to the root window, which always exists; only this tells whether the window still does.
    XWindowAttributes attributes = {};
    XGetWindowAttributes(x_.display(), window, &attributes);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = message;
    event.xclient.format = 32;
    std::copy(data.begin(), data.end(), event.xclient.data.l);
    XSendEvent(x_.display(), x_.root(), False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
    return trap.sync();
}

} // namespace tarvik
