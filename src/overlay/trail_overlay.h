// The feedback on every screen: one panel per screen, all showing the same trail.
#pragma once

#include "ports/screens.h"
#include "ports/trail_panel.h"
#include "support/path.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvik {

/// Main thread. Locations are in event-location units throughout, origin at the top left of the main display.
class TrailOverlay {
public:
    /// Follows the changes of the list of screens until it is destroyed. Makes no panel yet.
    TrailOverlay(Screens& screens, TrailPanels& panels);
    ~TrailOverlay();
    TrailOverlay(const TrailOverlay&) = delete;
    TrailOverlay& operator=(const TrailOverlay&) = delete;

    /// Shows the path on every screen, and the label (an empty one too) on the screen that holds its newest point.
    void update(const PathView& points, const std::string& label);
    void hide();
    /// Drops all panels and makes new ones for the screens there are now, which the next update shows.
    void rebuild();

private:
    struct Entry {
        Rect frame;
        std::unique_ptr<TrailPanel> panel;
    };

    Screens& screens_;
    TrailPanels& factory_;
    std::vector<Entry> panels_;
};

} // namespace tarvik
