// The native window of one panel.
#pragma once

#include "overlay/trail_mask.h"
#include "platform/linux/x11/x11_main_connection.h"

#include <QImage>

#include <optional>
#include <string>

namespace tarvik {

/// What every trail window needs of the server: a visual with an alpha channel and its colormap. Main thread.
class X11TrailVisual {
public:
    explicit X11TrailVisual(const X11MainConnection& connection);
    ~X11TrailVisual();
    X11TrailVisual(const X11TrailVisual&) = delete;
    X11TrailVisual& operator=(const X11TrailVisual&) = delete;

    /// Why the display cannot show a trail; empty when it can.
    const std::string& problem() const { return problem_; }
    xcb_visualid_t visual() const { return visual_; }
    xcb_colormap_t colormap() const { return colormap_; }

private:
    const X11MainConnection& connection_;
    std::string problem_;
    xcb_visualid_t visual_ = XCB_NONE;
    xcb_colormap_t colormap_ = XCB_NONE;
};

/// An override-redirect window that lets all input through. Either translucent (a compositing manager blends it), or
/// cut to a shape that the caller builds up (without one). Coordinates are device pixels of the window. Main thread.
class X11TrailWindow {
public:
    X11TrailWindow(X11MainConnection& connection, const X11TrailVisual& visual, const PixelRect& frame);
    ~X11TrailWindow();
    X11TrailWindow(const X11TrailWindow&) = delete;
    X11TrailWindow& operator=(const X11TrailWindow&) = delete;

    xcb_window_t id() const { return window_; }

    /// Empties the window and makes it translucent everywhere, or, with a colour, shaped and filled with it.
    void reset(std::optional<std::uint32_t> fill);
    /// Empties a part of a translucent window.
    void clear(const PixelRect& rect) const;
    void map() const;
    void unmap() const;
    void raise() const;

    /// Shows an image (premultiplied ARGB) with its top left corner at x, y.
    void put(const QImage& image, int x, int y) const;

    /// Adds to the part of the shape that only grows.
    void addToShape(const std::vector<PixelRect>& rects) const;
    /// The part of the shape that moves.
    void setMovingShape(const std::vector<PixelRect>& rects, int x, int y) const;
    /// Applies both parts at once.
    void applyShape() const;

private:
    void setProperties() const;

    X11MainConnection& connection_;
    xcb_connection_t* const xcb_;
    const xcb_window_t window_;
    const xcb_gcontext_t context_;
    /// Regions on the server: the growing part, the moving part, and their union.
    const std::uint32_t grown_;
    const std::uint32_t moving_;
    const std::uint32_t whole_;
};

} // namespace tarvik
