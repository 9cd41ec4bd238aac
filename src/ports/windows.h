// The windows of other applications.
#pragma once

#include "support/geometry.h"

#include <memory>
#include <optional>
#include <string>

namespace tarvik {

/// A window of another application. It may vanish at any moment; every operation then answers as stated.
class Window {
public:
    virtual ~Window() = default;
    /// The platform's error code; 0 is success.
    virtual int minimize() = 0;
    /// Nothing when the platform does not say.
    virtual std::optional<bool> isFullScreen() const = 0;
    /// The platform's error code; 0 is success.
    virtual int setFullScreen(bool on) = 0;
    /// In event-location units; nothing when it cannot be read.
    virtual std::optional<Rect> frame() const = 0;
    /// One line for the log.
    virtual std::string describe() const = 0;
};

/// Called on the actions' thread; may wait for the application, but not for ever.
class Windows {
public:
    virtual ~Windows() = default;
    /// The window under the point (event-location units), else the active application's focused window, else null.
    virtual std::unique_ptr<Window> targetWindow(std::optional<Point> point) = 0;
};

} // namespace tarvik
