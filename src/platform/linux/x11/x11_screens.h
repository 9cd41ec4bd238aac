// The monitors, as RandR lists them.
#pragma once

#include "platform/linux/x11/x11_main_connection.h"
#include "ports/screens.h"

#include <QObject>

#include <mutex>
#include <string_view>

namespace tarvik {

/// Made and destroyed on the main thread, after the QGuiApplication.
///
/// Frames are device pixels of the root window, taken from RandR alone: the toolkit's geometry is in its own logical
/// pixels. Of the toolkit only the ratio per monitor is used, and only to say how large a point is (`unitsPerPoint`).
/// The primary monitor comes first; a monitor that shows a part of another one (a mirror) is left out.
class X11Screens final : public Screens {
public:
    explicit X11Screens(X11MainConnection& connection);
    ~X11Screens() override;
    X11Screens(const X11Screens&) = delete;
    X11Screens& operator=(const X11Screens&) = delete;

    std::vector<Screen> screens() const override;
    void onChange(std::function<void()> handler) override { changed_ = std::move(handler); }

private:
    void watch();
    /// Reads the list again and reports it if it is another one.
    void refresh();
    std::vector<Screen> read() const;

    X11MainConnection& connection_;
    std::function<void()> changed_;
    mutable std::mutex mutex_;
    std::vector<Screen> screens_;
    /// Receives the toolkit's signals as long as this object lives.
    std::unique_ptr<QObject> context_;
    std::shared_ptr<void> events_;
};

/// How many device pixels make a point: the first of these that is above 1, else 1.
/// `toolkitRatio`: what the toolkit uses for that monitor. `resources`: the server's resource database, whose Xft.dpi,
/// divided by 96 and rounded to quarters, is the scale of the desktop. `gdkScale`: the variable GDK_SCALE, which some
/// desktops set alone.
double x11UnitsPerPoint(double toolkitRatio, std::string_view resources, std::string_view gdkScale);

} // namespace tarvik
