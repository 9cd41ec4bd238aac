// One screen's share of the trail: a transparent window that lets every click through.
#pragma once

#include "ports/screens.h"
#include "support/path.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace tarvik {

/// Main thread.
class TrailPanel {
public:
    virtual ~TrailPanel() = default;
    /// Replaces what the panel shows. Points are in event-location units. With a label, the pill stands beside `head`;
    /// without one there is no pill.
    virtual void draw(const PathView& points, const std::optional<std::string>& label, Point head) = 0;
    /// Above everything, without taking the focus. Does nothing while visible.
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual bool visible() const = 0;
};

class TrailPanels {
public:
    virtual ~TrailPanels() = default;
    virtual std::unique_ptr<TrailPanel> make(const Screen& screen) = 0;
    /// How long nothing is drawn after something was, so that a quick mouse does not have more painted than a screen
    /// can show. None where the system gathers what is drawn for each frame by itself.
    virtual std::chrono::milliseconds pause() const { return {}; }
};

} // namespace tarvik
