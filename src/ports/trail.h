// The feedback that the engine gives while a gesture is drawn.
#pragma once

#include "support/path.h"

#include <string>

namespace tarvik {

class Trail {
public:
    virtual ~Trail() = default;
    /// Shows the whole path, in event-location units, with the label beside its head. Tap's thread; must not wait.
    virtual void update(const PathView& points, const std::string& label) = 0;
    /// Tap's thread; must not wait.
    virtual void hide() = 0;
};

} // namespace tarvik
