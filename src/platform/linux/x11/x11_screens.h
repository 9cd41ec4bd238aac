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
/// pixels. Of the toolkit only the ratio per monitor is used, and only to say how large a point is (`unitsPerPoint`). A
/// change of the resource database is a change of the screens.
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
    std::vector<Screen> monitors(const std::function<Screen(Rect frame, double toolkitRatio)>& make) const;

    X11MainConnection& connection_;
    std::function<void()> changed_;
    mutable std::mutex mutex_;
    std::vector<Screen> screens_;
    /// Receives the toolkit's signals as long as this object lives.
    std::unique_ptr<QObject> context_;
    std::shared_ptr<void> events_;
};

/// What the desktop says about the size of a point on one monitor.
struct X11ScaleHints {
    /// What the toolkit uses for that monitor, and whether it was told so (QT_SCREEN_SCALE_FACTORS, QT_SCALE_FACTOR,
    /// QT_USE_PHYSICAL_DPI) or has worked it out by itself.
    double toolkitRatio = 1;
    bool toolkitWasTold = false;
    /// The server's resource database, whose Xft.dpi, divided by 96, is the scale of the desktop.
    std::string_view resources;
    /// The variable GDK_SCALE, which some desktops set alone.
    std::string_view gdkScale;
};

/// How many device pixels make a point on a monitor: at least 1. X11 itself has one scale for all monitors, and the
/// physical sizes that monitors report are too often wrong; so a trail is as large as what the applications draw. What
/// the toolkit was told counts first, since that alone can differ between monitors; then the first of Xft.dpi, the
/// toolkit's own ratio (only where there is no Xft.dpi; both rounded to quarters) and GDK_SCALE that is above 1.
double x11UnitsPerPoint(const X11ScaleHints& hints);

} // namespace tarvik
