// One screen's share of the trail, in one window.
#pragma once

#include "overlay/trail_shape.h"
#include "platform/linux/x11/trail_pill.h"
#include "platform/linux/x11/x11_trail_window.h"
#include "ports/trail_panel.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tarvik {

/// Main thread. The cost of an update follows the length of what is new: the mask takes the new segments, and only the
/// rectangles they touch are sent. With a compositing manager these are pixels; without one the window is opaque and
/// its shape grows instead. Which of the two, every trail decides when it begins; a trail that sees the compositing
/// manager go, or another one come, goes on as a shape, which is right with any and with none. Masks and images live
/// from the first segment to the hiding.
class X11TrailPanel final : public TrailPanel {
public:
    struct Environment {
        X11MainConnection& connection;
        const X11TrailVisual& visual;
        /// Does a compositing manager run?
        std::function<bool()> composited;
        /// Called after the panel was shown or hidden, and when it goes away while shown.
        std::function<void(X11TrailPanel&)> visibilityChanged;
    };

    X11TrailPanel(const Screen& screen, Environment environment);
    ~X11TrailPanel() override;
    X11TrailPanel(const X11TrailPanel&) = delete;
    X11TrailPanel& operator=(const X11TrailPanel&) = delete;

    void draw(const PathView& points, const std::optional<std::string>& label, Point head) override;
    void show() override;
    void hide() override;
    bool visible() const override { return window_.has_value(); }

    /// Only while visible.
    xcb_window_t window() const { return window_->id(); }
    void raise() const { window_->raise(); }
    /// The server has lost a part of the window's contents.
    void exposed(const xcb_expose_event_t& event);
    /// A compositing manager has come, gone or taken the place of another one.
    void compositingChanged();

private:
    void begin(std::shared_ptr<const Path> path);
    void forget();
    void chooseSurface();
    void extend(const PathView& points);
    void placePill();
    void makePill();
    void addDirty(const PixelRect& rect);
    void present();
    void presentPixels(const PixelRect& rect) const;
    void presentStrip(const PixelRect& rect) const;
    void presentShape();
    PixelRect bounds() const;

    const Screen screen_;
    const Environment environment_;
    /// While visible. A new one each time: compositing managers are known to miss that the shape of a window has
    /// changed when it is taken off the screen and shown again at once.
    std::optional<X11TrailWindow> window_;

    // Of the trail on show; nothing of it outlives the hiding.
    bool begun_ = false;
    std::uint32_t accent_ = 0;
    std::shared_ptr<const Path> path_;
    std::size_t drawn_ = 0;
    std::optional<TrailMask> mask_;
    TrailColours colours_{};
    /// While the window is cut to a shape.
    std::optional<TrailShape> shape_;
    std::optional<std::string> label_;
    /// In the panel, device pixels.
    Point head_;
    std::optional<TrailPill> pill_;
    /// Where the pill stands, and where the window still shows it; empty for nowhere.
    PixelRect pillRect_;
    PixelRect shownPillRect_;
    /// What differs from the window, and everything that was ever drawn.
    std::vector<PixelRect> dirty_;
    PixelRect inked_;
    PixelRect exposed_;
};

} // namespace tarvik
