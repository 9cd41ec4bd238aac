// Plain geometry. Every value is in the coordinate space of whoever made it; nothing here converts.
#pragma once

namespace tarvik {

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double maxX() const { return x + width; }
    double maxY() const { return y + height; }

    /// Half open: the left and top edges belong to the rectangle, the right and bottom ones do not.
    bool contains(Point p) const { return p.x >= x && p.x < maxX() && p.y >= y && p.y < maxY(); }
    /// Closed: a rectangle contains itself.
    bool contains(const Rect& r) const { return r.x >= x && r.y >= y && r.maxX() <= maxX() && r.maxY() <= maxY(); }
    /// This rectangle grown by `margin` on every side.
    Rect enlarged(double margin) const { return {x - margin, y - margin, width + 2 * margin, height + 2 * margin}; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace tarvik
