#include "platform/linux/x11/x11_desktop_shell.h"

#include "platform/linux/x11/x11_applications.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tarvik {

X11DesktopShell::X11DesktopShell(const X11Ewmh& ewmh, std::shared_ptr<const DesktopEntries> entries, LogSink& log)
    : ewmh_(ewmh), atoms_(ewmh.connection().atoms()), entries_(std::move(entries)), log_(log), bus_(log) {}

bool X11DesktopShell::perform(ActionKind kind) {
    switch (kind) {
    case ActionKind::spaceLeft:
        return changeDesktop(-1);
    case ActionKind::spaceRight:
        return changeDesktop(+1);
    case ActionKind::showDesktop:
        return showDesktop();
    case ActionKind::nextWindow:
        return changeWindow(+1);
    case ActionKind::previousWindow:
        return changeWindow(-1);
    case ActionKind::previousApp:
        return changeApplication();
    case ActionKind::closeWindow:
        return closeWindow();
    case ActionKind::hideApp:
        return hideApplication();
    default:
        return bus_.perform(kind);
    }
}

bool X11DesktopShell::changeDesktop(int step) {
    const auto current = ewmh_.currentDesktop();
    const auto count = ewmh_.desktopCount();
    if (!supportsAll({atoms_.currentDesktop, atoms_.numberOfDesktops}) || !current || !count)
        return false;
    const auto target = neighbourDesktop(*current, *count, step, ewmh_.desktopLayout());
    if (!target) {
        log_.write(fmt::format("no desktop on that side of {} of {}", *current + 1, *count));
        return true;
    }
    ewmh_.setCurrentDesktop(*target);
    log_.write(fmt::format("desktop {} of {}", *target + 1, *count));
    return true;
}

bool X11DesktopShell::showDesktop() {
    if (!supportsAll({atoms_.showingDesktop}))
        return false;
    const bool show = !ewmh_.showingDesktop();
    ewmh_.showDesktop(show);
    log_.write(show ? "show desktop" : "show windows");
    return true;
}

bool X11DesktopShell::changeWindow(int step) {
    if (!supportsAll({atoms_.clientList, atoms_.activeWindow}))
        return false;
    const auto active = activeWindow();
    auto windows = active ? ewmh_.clients() : std::vector<XWindow>();
    const auto belongs = active ? sameApplicationAs(*active) : [](XWindow) { return false; };
    std::erase_if(windows, [&](XWindow w) { return w != active && !(isCandidate(w) && belongs(w)); });
    const auto place = std::find(windows.begin(), windows.end(), active.value_or(None));
    if (windows.size() < 2 || place == windows.end()) {
        log_.write("no other window of the application");
        return true;
    }
    const auto count = static_cast<std::ptrdiff_t>(windows.size());
    const auto next = (place - windows.begin() + step + count) % count;
    activate(windows[static_cast<std::size_t>(next)]);
    return true;
}

bool X11DesktopShell::changeApplication() {
    if (!supportsAll({atoms_.clientListStacking, atoms_.activeWindow}))
        return false;
    const auto active = ewmh_.activeWindow();
    auto windows = ewmh_.stacking();
    const auto belongs = active ? sameApplicationAs(*active) : [](XWindow) { return false; };
    std::erase_if(windows, [&](XWindow w) { return w == active || !isCandidate(w) || belongs(w); });
    std::reverse(windows.begin(), windows.end());
    std::stable_partition(windows.begin(), windows.end(), [&](XWindow w) {
        return !ewmh_.hasState(w, atoms_.stateAbove) && !ewmh_.hasState(w, atoms_.stateBelow);
    });
    if (windows.empty())
        log_.write("no other application");
    else
        activate(windows.front());
    return true;
}

bool X11DesktopShell::closeWindow() {
    if (!supportsAll({atoms_.closeWindow, atoms_.activeWindow}))
        return false;
    const auto active = activeWindow();
    if (active)
        ewmh_.close(*active);
    log_.write(active ? fmt::format("close {:#x}", *active) : "no window to close");
    return true;
}

bool X11DesktopShell::hideApplication() {
    if (!supportsAll({atoms_.clientList, atoms_.activeWindow}))
        return false;
    const auto active = activeWindow();
    auto windows = active ? ewmh_.clients() : std::vector<XWindow>();
    const auto belongs = active ? sameApplicationAs(*active) : [](XWindow) { return false; };
    std::erase_if(windows, [&](XWindow w) { return w != active && (!belongs(w) || ewmh_.isMinimized(w)); });
    // The active window last, or the focus would wander through the others.
    std::stable_partition(windows.begin(), windows.end(), [active](XWindow w) { return w != active; });
    for (const auto window : windows)
        ewmh_.minimize(window);
    log_.write(fmt::format("minimize {} of the application", windows.size()));
    return true;
}

bool X11DesktopShell::supportsAll(std::initializer_list<Atom> hints) const {
    return std::all_of(hints.begin(), hints.end(), [this](Atom hint) { return ewmh_.supports(hint); });
}

std::optional<XWindow> X11DesktopShell::activeWindow() const {
    const auto window = ewmh_.activeWindow();
    return window && ewmh_.isApplicationWindow(*window) ? window : std::nullopt;
}

bool X11DesktopShell::isCandidate(XWindow window) const {
    const auto kind = ewmh_.kind(window);
    return (kind == WindowKind::normal || kind == WindowKind::dialog) && ewmh_.isOnCurrentDesktop(window) &&
           !ewmh_.isMinimized(window) && !ewmh_.hasState(window, atoms_.stateSkipTaskbar);
}

std::function<bool(XWindow)> X11DesktopShell::sameApplicationAs(XWindow window) const {
    return [this, window, id = applicationId(ewmh_.connection(), window, *entries_)](XWindow other) {
        return other == window || (id && applicationId(ewmh_.connection(), other, *entries_) == id);
    };
}

void X11DesktopShell::activate(XWindow window) {
    ewmh_.activate(window);
    log_.write(fmt::format("activate {:#x}", window));
}

} // namespace tarvik
