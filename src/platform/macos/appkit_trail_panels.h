// The trail's panels: transparent windows of the application framework.
#pragma once

#include "ports/trail_panel.h"

namespace tarvik {

/// Main thread.
class AppKitTrailPanels final : public TrailPanels {
public:
    std::unique_ptr<TrailPanel> make(const Screen& screen) override;
};

} // namespace tarvik
