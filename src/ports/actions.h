// Where the engine sends the actions of gestures and wheel steps.
#pragma once

#include "model/gesture.h"
#include "support/geometry.h"

#include <optional>

namespace tarvik {

class Actions {
public:
    virtual ~Actions() = default;
    /// Carries the action out; `point` (event-location units) only helps to find the target window. Actions start in
    /// the order of the calls. Tap's thread; must not wait for an application.
    virtual void perform(const GestureAction& action, std::optional<Point> point) = 0;
};

} // namespace tarvik
