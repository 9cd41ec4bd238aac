// The native window of one panel.
#pragma once

#include "overlay/trail_mask.h"
#include "platform/linux/x11/x11_main_connection.h"

#include <QImage>

#include <optional>
#include <string>

namespace tarvik {

/// What every trail window needs of the server: a visual with an alpha channel and its colormap, names. Main thread.
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
    /// The properties that tell compositing managers how to treat the window.
    void describe(xcb_window_t window) const;

private:
    const X11MainConnection& connection_;
    std::string problem_;
    xcb_visualid_t visual_ = XCB_NONE;
    xcb_colormap_t colormap_ = XCB_NONE;
    xcb_atom_t windowType_ = XCB_NONE;
    xcb_atom_t dragged_ = XCB_NONE;
    xcb_atom_t bypassCompositor_ = XCB_NONE;
};

/// An override-redirect window that lets all input through, in one of two ways: translucent (a compositing manager
/// blends it), or cut to a shape that the caller builds up. Coordinates are device pixels of the window. Main thread.
class X11TrailWindow {
public:
    X11TrailWindow(X11MainConnection& connection, const X11TrailVisual& visual, const PixelRect& frame);
    ~X11TrailWindow();
    X11TrailWindow(const X11TrailWindow&) = delete;
    X11TrailWindow& operator=(const X11TrailWindow&) = delete;

    xcb_window_t id() const { return window_; }

    /// On top, with an empty shape.
    void map();
    void raise() const;

    /// Does the server draw the mapped window apart from the screen, for a compositing manager to blend? That one is
    /// running says little: one that has just come, or that stands back for a full-screen application, leaves the
    /// window on the screen, where what is transparent would be black. Waits for the server.
    bool redirected() const;
    /// The window, mapped or not, is empty, and transparent where `cover` says.
    void makeTranslucent();
    /// A translucent window reaches at least so far. It is no larger than it must be, in large steps: what it covers is
    /// black for a moment when the compositing manager goes away, and until then is blended with all that is below.
    void cover(const PixelRect& rect);
    /// The window, mapped or not, has an empty shape that is filled with this colour (0xRRGGBB).
    void makeShaped(std::uint32_t fill);
    /// Fills a part of a shaped window again.
    void clear(const PixelRect& rect) const;

    /// Shows an image (premultiplied ARGB) with its top left corner at x, y.
    void put(const QImage& image, int x, int y) const;

    /// Adds to the lasting part of the shape, or replaces it.
    void addToShape(const std::vector<PixelRect>& rects) const;
    void replaceShape(const std::vector<PixelRect>& rects) const;
    /// The part of the shape that moves.
    void setMovingShape(const std::vector<PixelRect>& rects, int x, int y) const;
    /// Applies both parts at once.
    void applyShape() const;

private:
    void empty(std::uint32_t background);

    X11MainConnection& connection_;
    xcb_connection_t* const xcb_;
    const xcb_window_t window_;
    const xcb_gcontext_t context_;
    /// Regions on the server: the lasting part, the moving part, and their union.
    const std::uint32_t lasting_;
    const std::uint32_t moving_;
    const std::uint32_t whole_;
    PixelRect covered_;
};

} // namespace tarvik
