// When pixels of the screen take the colour of a line, read back from the X server.
#pragma once

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>

#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

namespace tarvik {

using Clock = std::chrono::steady_clock;

struct Pixel {
    int x = 0;
    int y = 0;
};

/// A pixel that is blank before the movement that it belongs to is drawn.
struct Probe {
    Pixel at;
    Clock::time_point sent;
    std::optional<Clock::time_point> seen;
};

/// A connection of its own. The server says when something on the screen has changed, then the pixels that are still
/// waited for are read: nothing is asked of the server while nothing happens.
class ScreenWatch {
public:
    ScreenWatch();
    ~ScreenWatch();
    ScreenWatch(const ScreenWatch&) = delete;
    ScreenWatch& operator=(const ScreenWatch&) = delete;

    int width() const { return DisplayWidth(display_, 0); }
    int height() const { return DisplayHeight(display_, 0); }

    /// Any thread; just before the movement is made.
    void expect(Pixel at);
    /// Notes what shows, until all that was expected does or `deadline` has come.
    void watch(Clock::time_point deadline, std::size_t probes);
    /// After `watch`.
    std::vector<Probe> takeProbes();
    bool isDrawn(Pixel at);
    /// The screen is blank again at this place; false when it does not become so within some seconds.
    bool waitUntilBlank(Pixel at);

private:
    void waitForChange(Clock::time_point deadline);
    /// True when no expected pixel is missing.
    bool look();

    Display* const display_;
    const Window root_;
    int damageEvent_ = 0;
    Damage damage_;
    std::mutex mutex_;
    std::vector<Probe> probes_;
    std::size_t firstUnseen_ = 0;
};

} // namespace tarvik
