// The displays.
#pragma once

#include "support/geometry.h"

#include <functional>
#include <vector>

namespace tarvik {

struct Screen {
    /// In event-location units, origin at the top left of the main display.
    Rect frame;
    /// How many of those units make one point.
    double unitsPerPoint = 1;
    friend bool operator==(const Screen&, const Screen&) = default;
};

class Screens {
public:
    virtual ~Screens() = default;
    /// The main display first. Any thread.
    virtual std::vector<Screen> screens() const = 0;
    /// Called on the main thread after every change of the list. Replaces an earlier handler.
    virtual void onChange(std::function<void()> handler) = 0;
};

} // namespace tarvik
