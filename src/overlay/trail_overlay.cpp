#include "overlay/trail_overlay.h"

#include <optional>

namespace tarvik {

TrailOverlay::TrailOverlay(Screens& screens, TrailPanels& panels) : screens_(screens), factory_(panels) {
    screens_.onChange([this] { rebuild(); });
}

TrailOverlay::~TrailOverlay() {
    screens_.onChange({});
    hide();
}

void TrailOverlay::update(const PathView& points, const std::string& label) {
    if (panels_.empty())
        rebuild();
    const Point head = points.empty() ? Point{} : points.back();
    for (const Entry& entry : panels_) {
        entry.panel->draw(points, entry.frame.contains(head) ? std::optional(label) : std::nullopt, head);
        if (!entry.panel->visible())
            entry.panel->show();
    }
}

void TrailOverlay::hide() {
    for (const Entry& entry : panels_) {
        if (entry.panel->visible())
            entry.panel->hide();
    }
}

void TrailOverlay::rebuild() {
    hide();
    panels_.clear();
    for (const Screen& screen : screens_.screens())
        panels_.push_back({screen.frame, factory_.make(screen)});
}

} // namespace tarvik
