#include "platform/linux/x11/x11_windows.h"

#include "platform/linux/x11/x11_applications.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace tarvik {
namespace {

/// Stands beside the server's own error codes where the window manager does not offer the operation.
constexpr int notOffered = 1;

const char* word(bool value) { return value ? "true" : "false"; }

std::string_view word(WindowKind kind) {
    constexpr std::array<std::string_view, 5> words = {"normal", "dialog", "desktop", "dock", "other"};
    return words[static_cast<std::size_t>(kind)];
}

class X11Window final : public Window {
public:
    X11Window(const X11Ewmh& ewmh, const DesktopEntries& entries, XWindow window)
        : ewmh_(ewmh), entries_(entries), window_(window) {}

    int minimize() override {
        if (!ewmh_.managed() || !ewmh_.allows(window_, atoms().actionMinimize))
            return notOffered;
        return ewmh_.minimize(window_);
    }

    std::optional<bool> isFullScreen() const override {
        if (!ewmh_.supports(atoms().stateFullScreen) || !ewmh_.frame(window_))
            return std::nullopt;
        return ewmh_.hasState(window_, atoms().stateFullScreen);
    }

    int setFullScreen(bool on) override {
        if (!ewmh_.supports(atoms().stateFullScreen) || (on && !ewmh_.allows(window_, atoms().actionFullScreen)))
            return notOffered;
        return ewmh_.setState(window_, atoms().stateFullScreen, on);
    }

    std::optional<Rect> frame() const override { return ewmh_.frame(window_); }

    std::string describe() const override {
        char number[24];
        std::snprintf(number, sizeof number, "0x%lx", window_);
        const auto name = applicationName(ewmh_.connection(), window_, entries_);
        const auto head = "[" + name.value_or(std::string("window ") + number) + "] ";
        if (!ewmh_.frame(window_))
            return head + "gone";
        const auto fullScreen = isFullScreen();
        return head + "window=" + number + " role=" + std::string(word(ewmh_.kind(window_))) +
               " minimized=" + word(ewmh_.isMinimized(window_)) +
               " settable=" + word(ewmh_.allows(window_, atoms().actionMinimize)) +
               " fullscreen=" + (fullScreen ? word(*fullScreen) : "unknown");
    }

private:
    const X11Atoms& atoms() const { return ewmh_.connection().atoms(); }

    const X11Ewmh& ewmh_;
    const DesktopEntries& entries_;
    const XWindow window_;
};

} // namespace

X11Windows::X11Windows(const X11Ewmh& ewmh, std::shared_ptr<const DesktopEntries> entries)
    : ewmh_(ewmh), entries_(std::move(entries)) {}

std::unique_ptr<Window> X11Windows::targetWindow(std::optional<Point> point) {
    auto window = point ? windowAt(*point) : std::nullopt;
    if (!window) {
        window = ewmh_.activeWindow();
        // The announcement outlives a window for a moment.
        if (window && !(ewmh_.isApplicationWindow(*window) && ewmh_.frame(*window)))
            window.reset();
    }
    return window ? std::make_unique<X11Window>(ewmh_, *entries_, *window) : nullptr;
}

std::optional<XWindow> X11Windows::windowAt(Point point) const {
    auto windows = ewmh_.stacking();
    std::reverse(windows.begin(), windows.end());
    for (const auto window : windows) {
        const auto frame = ewmh_.frame(window);
        if (!frame || !frame->contains(point) || !ewmh_.isViewable(window) || !ewmh_.isOnCurrentDesktop(window) ||
            ewmh_.isMinimized(window))
            continue;
        if (ewmh_.isApplicationWindow(window))
            return window;
    }
    return std::nullopt;
}

} // namespace tarvik
