// Carries the trail from the tap's thread to the main thread: the newest state only.
#pragma once

#include "overlay/trail_overlay.h"
#include "ports/trail.h"

#include <functional>
#include <mutex>
#include <string>

namespace tarvik {

/// The tap's thread never waits for a painter: it replaces one state under a mutex that is held for a copy and no
/// longer. However much arrives in between, the main thread draws the newest path or hides; what was sent before a
/// `hide` is not drawn after it. The `Path` object tells one gesture from the next, so that panels start afresh when
/// the hiding between two gestures was overtaken.
class TrailMailbox final : public Trail {
public:
    /// `wake` asks the main loop for a `deliver`. Called on the tap's thread, never while a delivery is due already.
    explicit TrailMailbox(std::function<void()> wake);

    void update(const PathView& points, const std::string& label) override;
    void hide() override;

    /// Main thread. Hands over what has arrived since the last delivery. When something has, another delivery is due as
    /// soon as the painter has rested: whatever arrives until then waits for it and wakes nobody. False ends that.
    bool deliver(TrailOverlay& overlay);

private:
    struct State {
        bool visible = false;
        PathView points;
        std::string label;
    };

    void post(bool visible, PathView points, const std::string& label);

    const std::function<void()> wake_;
    std::mutex mutex_;
    State newest_;
    bool fresh_ = false; // not yet handed over
    bool due_ = false;   // somebody will call `deliver`
    /// Main thread only; kept for the capacity of its label.
    State delivered_;
};

} // namespace tarvik
