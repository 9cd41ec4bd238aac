#include "platform/linux/x11/x11_trail_panel.h"

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvik {

namespace {

/// More separate rectangles than this are sent as one around them all.
constexpr std::size_t mostRects = 256;
/// With so many the server needs about half a millisecond for each change of the shape, which a mouse that reports a
/// thousand times a second leaves it. A gesture of a few long strokes has half as many.
constexpr std::size_t mostShapeRects = 1000;
/// What is sent at once, so that a whole screen needs no second one in memory.
constexpr int mostPixels = 1 << 16;

std::uint32_t accentColour(const QPalette& palette) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
    return palette.color(QPalette::Active, QPalette::Accent).rgb();
#else
    return palette.color(QPalette::Active, QPalette::Highlight).rgb();
#endif
}

long area(const PixelRect& rect) { return static_cast<long>(rect.width) * rect.height; }

PixelRect pixels(const Rect& frame) {
    return {static_cast<int>(std::lround(frame.x)), static_cast<int>(std::lround(frame.y)),
            static_cast<int>(std::lround(frame.width)), static_cast<int>(std::lround(frame.height))};
}

} // namespace

X11TrailPanel::X11TrailPanel(const Screen& screen, Environment environment)
    : screen_(screen), environment_(std::move(environment)) {}

X11TrailPanel::~X11TrailPanel() { hide(); }

PixelRect X11TrailPanel::bounds() const {
    const PixelRect frame = pixels(screen_.frame);
    return {0, 0, frame.width, frame.height};
}

void X11TrailPanel::draw(const PathView& points, const std::optional<std::string>& label, Point head) {
    if (!begun_ || points.path != path_ || points.count < drawn_)
        begin(points.path);
    extend(points);
    label_ = label;
    head_ = {head.x - screen_.frame.x, head.y - screen_.frame.y};
    if (window_)
        present();
}

void X11TrailPanel::show() {
    if (window_)
        return;
    window_.emplace(environment_.connection, environment_.visual, pixels(screen_.frame));
    environment_.visibilityChanged(*this);
    window_->map();
    chooseSurface();
    present();
}

void X11TrailPanel::hide() {
    if (!window_)
        return;
    window_.reset();
    environment_.visibilityChanged(*this);
    forget();
}

void X11TrailPanel::forget() {
    begun_ = false;
    path_.reset();
    drawn_ = 0;
    mask_.reset();
    shape_.reset();
    pill_.reset();
    pillRect_ = shownPillRect_ = inked_ = exposed_ = {};
    dirty_ = {};
}

void X11TrailPanel::begin(std::shared_ptr<const Path> path) {
    forget();
    begun_ = true;
    path_ = std::move(path);
    accent_ = accentColour(QGuiApplication::palette()) & 0xFFFFFF;
    colours_ = trailColours(accent_, screen_.unitsPerPoint);
    if (window_)
        chooseSurface();
}

/// The window is mapped, and what it shows no longer counts.
void X11TrailPanel::chooseSurface() {
    shape_.reset();
    if (environment_.composited() && window_->redirected()) {
        window_->makeTranslucent();
    } else {
        shape_.emplace(mostShapeRects);
        window_->makeShaped(accent_);
    }
    pill_.reset();
    pillRect_ = shownPillRect_ = {};
}

void X11TrailPanel::extend(const PathView& points) {
    if (points.count > 1 && !mask_)
        mask_.emplace(bounds().width, bounds().height, screen_.unitsPerPoint);
    // A location names a pixel; the line goes through the middle of it.
    const auto middle = [&](std::size_t i) {
        return Point{points[i].x - screen_.frame.x + 0.5, points[i].y - screen_.frame.y + 0.5};
    };
    for (; drawn_ < points.count; ++drawn_) {
        if (drawn_ == 0)
            continue; // a single point is no line
        for (const PixelRect& rect : mask_->stroke(middle(drawn_ - 1), middle(drawn_)))
            addDirty(rect);
    }
}

void X11TrailPanel::placePill() {
    if (!label_) {
        pill_.reset();
        pillRect_ = {};
    } else {
        if (!pill_ || pill_->label() != *label_) {
            makePill();
            addDirty(pillRect_); // another text may stand in the same place
        }
        pillRect_ = pill_->place(head_, bounds().width, bounds().height);
    }
    if (shape_ || pillRect_ == shownPillRect_)
        return;
    // Together, where they overlap: the pill must not be seen to blink.
    if (pillRect_.intersects(shownPillRect_)) {
        addDirty(pillRect_.united(shownPillRect_));
    } else {
        addDirty(shownPillRect_);
        addDirty(pillRect_);
    }
}

void X11TrailPanel::makePill() {
    pill_.emplace(*label_, screen_.unitsPerPoint, QGuiApplication::font(), pillColours(QGuiApplication::palette()));
    if (shape_)
        pill_->makeOpaque(accent_);
}

void X11TrailPanel::addDirty(const PixelRect& rect) {
    const PixelRect inside = rect.intersected(bounds());
    if (inside.empty())
        return;
    inked_ = inked_.united(inside);
    if (!dirty_.empty()) {
        const PixelRect both = dirty_.back().united(inside);
        if (dirty_.size() >= mostRects || area(both) <= area(dirty_.back()) + area(inside)) {
            dirty_.back() = both;
            return;
        }
    }
    dirty_.push_back(inside);
}

void X11TrailPanel::present() {
    placePill();
    if (shape_) {
        presentShape();
    } else {
        for (const PixelRect& rect : dirty_)
            window_->cover(rect);
        for (const PixelRect& rect : dirty_)
            presentPixels(rect);
    }
    dirty_.clear();
    shownPillRect_ = pillRect_;
    environment_.connection.flush();
}

void X11TrailPanel::presentPixels(const PixelRect& rect) const {
    const int rows = std::max(1, mostPixels / rect.width);
    for (int y = rect.y; y < rect.bottom(); y += rows)
        presentStrip({rect.x, y, rect.width, std::min(rows, rect.bottom() - y)});
}

void X11TrailPanel::presentStrip(const PixelRect& rect) const {
    QImage image(rect.width, rect.height, QImage::Format_ARGB32_Premultiplied);
    if (!mask_)
        image.fill(Qt::transparent);
    for (int y = 0; mask_ && y < rect.height; ++y) {
        const TrailMask::Level* levels = mask_->row(rect.y + y) + rect.x;
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < rect.width; ++x)
            line[x] = colours_[levels[x]];
    }
    if (pill_ && pillRect_.intersects(rect))
        QPainter(&image).drawImage(pillRect_.x - rect.x, pillRect_.y - rect.y, pill_->image());
    window_->put(image, rect.x, rect.y);
}

/// The line needs no pixels: the window's background has its colour. The pill does.
void X11TrailPanel::presentShape() {
    for (const PixelRect& rect : dirty_) {
        if (!mask_)
            break;
        const auto change = shape_->add(mask_->runs(rect));
        if (change.simplified)
            window_->replaceShape(change.rects);
        else
            window_->addToShape(change.rects);
    }
    window_->setMovingShape(pill_ ? pill_->runs() : std::vector<PixelRect>{}, pillRect_.x, pillRect_.y);
    window_->applyShape();
    if (!shownPillRect_.empty())
        window_->clear(shownPillRect_);
    if (pill_)
        window_->put(pill_->image(), pillRect_.x, pillRect_.y);
}

void X11TrailPanel::exposed(const xcb_expose_event_t& event) {
    exposed_ = exposed_.united({event.x, event.y, event.width, event.height});
    if (event.count > 0 || !window_)
        return;
    const PixelRect lost = std::exchange(exposed_, {}).intersected(inked_);
    if (shape_) {
        if (pill_ && lost.intersects(pillRect_))
            window_->put(pill_->image(), pillRect_.x, pillRect_.y);
    } else if (!lost.empty()) {
        presentPixels(lost);
    }
    environment_.connection.flush();
}

void X11TrailPanel::compositingChanged() {
    // A shape is right in any case, until the next trail.
    if (!window_ || shape_)
        return;
    shape_.emplace(mostShapeRects);
    window_->makeShaped(accent_);
    pill_.reset();
    addDirty(inked_);
    present();
}

} // namespace tarvik
