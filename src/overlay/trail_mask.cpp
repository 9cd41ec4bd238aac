#include "overlay/trail_mask.h"

#include "overlay/trail_style.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>
#include <utility>

namespace tarvik {

namespace {

/// Longer segments are cut: the rectangle around a long slanting line is mostly empty.
constexpr double longestPiece = 64;
/// How far, in pixels, the antialiased edge reaches to either side of the line's outline.
constexpr double edgeReach = 0.5;

/// The part of a segment that lies inside `area` (Liang and Barsky's method).
std::optional<std::pair<Point, Point>> clipped(Point from, Point to, const Rect& area) {
    double enter = 0;
    double leave = 1;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const auto cut = [&](double direction, double room) {
        if (direction == 0)
            return room >= 0;
        const double at = room / direction;
        if (direction < 0)
            enter = std::max(enter, at);
        else
            leave = std::min(leave, at);
        return enter <= leave;
    };
    if (!(cut(-dx, from.x - area.x) && cut(dx, area.maxX() - from.x) && cut(-dy, from.y - area.y) &&
          cut(dy, area.maxY() - from.y)))
        return std::nullopt;
    return std::pair{Point{from.x + enter * dx, from.y + enter * dy}, Point{from.x + leave * dx, from.y + leave * dy}};
}

double normalDistribution(double x) { return 0.5 * std::erfc(-x / std::sqrt(2.0)); }

} // namespace

PixelRect PixelRect::intersected(const PixelRect& other) const {
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    return {left, top, std::max(0, std::min(right(), other.right()) - left),
            std::max(0, std::min(bottom(), other.bottom()) - top)};
}

PixelRect PixelRect::united(const PixelRect& other) const {
    if (empty())
        return other;
    if (other.empty())
        return *this;
    const int left = std::min(x, other.x);
    const int top = std::min(y, other.y);
    return {left, top, std::max(right(), other.right()) - left, std::max(bottom(), other.bottom()) - top};
}

TrailMask::TrailMask(int width, int height, double pixelsPerPoint)
    : width_(std::max(width, 0))
    , height_(std::max(height, 0))
    , halfWidth_(trailStyle::lineWidth / 2 * pixelsPerPoint)
    , shadowReach_(trailStyle::shadowReach * pixelsPerPoint)
    // Zeroed pages come from the system untouched; a vector would write to all of them.
    , levels_(static_cast<Level*>(std::calloc(static_cast<std::size_t>(width_) * height_ + 1, sizeof(Level)))) {
    if (!levels_)
        throw std::bad_alloc();
}

std::vector<PixelRect> TrailMask::stroke(Point from, Point to) {
    std::vector<PixelRect> changed;
    if (!(std::isfinite(from.x) && std::isfinite(from.y) && std::isfinite(to.x) && std::isfinite(to.y)))
        return changed;
    const Rect panel{0, 0, static_cast<double>(width_), static_cast<double>(height_)};
    const auto visible = clipped(from, to, panel.enlarged(halfWidth_ + shadowReach_));
    if (!visible)
        return changed;
    const auto [start, end] = *visible;
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::hypot(dx, dy) / longestPiece)));
    Point last = start;
    for (int i = 1; i <= pieces; ++i) {
        const double part = static_cast<double>(i) / pieces;
        const Point next{start.x + part * dx, start.y + part * dy};
        const PixelRect rect = capsule(last, next);
        if (!rect.empty())
            changed.push_back(rect);
        last = next;
    }
    return changed;
}

PixelRect TrailMask::capsule(Point from, Point to) {
    const double reach = halfWidth_ + shadowReach_;
    const int left = static_cast<int>(std::floor(std::min(from.x, to.x) - reach));
    const int top = static_cast<int>(std::floor(std::min(from.y, to.y) - reach));
    const int right = static_cast<int>(std::ceil(std::max(from.x, to.x) + reach));
    const int bottom = static_cast<int>(std::ceil(std::max(from.y, to.y) + reach));
    const PixelRect area = PixelRect{left, top, right - left, bottom - top}.intersected(bounds());

    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double squaredLength = dx * dx + dy * dy;
    const double perLength = squaredLength > 0 ? 1 / squaredLength : 0;
    for (int y = area.y; y < area.bottom(); ++y) {
        Level* const levels = levels_.get() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
        const double py = y + 0.5 - from.y;
        for (int x = area.x; x < area.right(); ++x) {
            const double px = x + 0.5 - from.x;
            const double along = std::clamp((px * dx + py * dy) * perLength, 0.0, 1.0);
            const double ex = px - along * dx;
            const double ey = py - along * dy;
            const double squared = ex * ex + ey * ey;
            if (squared < reach * reach)
                levels[x] = std::max(levels[x], levelAt(std::sqrt(squared) - halfWidth_));
        }
    }
    return area;
}

/// `distance` is that from the line's outline, negative inside. Half of the levels are for the one pixel in which the
/// edge is antialiased, the others for the wide and faint shadow.
TrailMask::Level TrailMask::levelAt(double distance) const {
    if (distance <= -edgeReach)
        return fullLevel;
    if (distance < edgeReach)
        return static_cast<Level>(edgeLevel + (fullLevel - edgeLevel) * (edgeReach - distance));
    return static_cast<Level>(edgeLevel * std::max(0.0, (shadowReach_ - distance) / (shadowReach_ - edgeReach)));
}

std::vector<PixelRect> TrailMask::runs(const PixelRect& area) const {
    std::vector<PixelRect> result;
    const PixelRect inside = area.intersected(bounds());
    for (int y = inside.y; y < inside.bottom(); ++y) {
        const Level* const levels = row(y);
        for (int x = inside.x; x < inside.right(); ++x) {
            const int start = x;
            while (x < inside.right() && levels[x] >= halfLevel)
                ++x;
            if (x > start)
                result.push_back({start, y, x - start, 1});
        }
    }
    return result;
}

TrailColours trailColours(std::uint32_t rgb, double pixelsPerPoint) {
    using namespace trailStyle;
    const double reach = shadowReach * pixelsPerPoint;
    const double sigma = shadowRadius * pixelsPerPoint;
    const double width = lineWidth * pixelsPerPoint;
    TrailColours colours{};
    for (unsigned level = 1; level < colours.size(); ++level) {
        const double coverage = std::max(0.0, (static_cast<double>(level) - TrailMask::edgeLevel) /
                                                  (TrailMask::fullLevel - TrailMask::edgeLevel));
        const double distance = level >= TrailMask::edgeLevel
                                    ? edgeReach - coverage
                                    : reach - (reach - edgeReach) * static_cast<double>(level) / TrailMask::edgeLevel;
        // A long straight line, blurred, seen at that distance from its outline.
        const double blurred = normalDistribution((distance + width) / sigma) - normalDistribution(distance / sigma);
        const double line = lineOpacity * coverage;
        const double alpha = line + shadowOpacity * blurred * (1 - line);
        const auto channel = [&](unsigned shift) {
            return static_cast<std::uint32_t>(std::lround((rgb >> shift & 0xFF) * line)) << shift;
        };
        colours[level] =
            static_cast<std::uint32_t>(std::lround(alpha * 255)) << 24 | channel(16) | channel(8) | channel(0);
    }
    return colours;
}

} // namespace tarvik
