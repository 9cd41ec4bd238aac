// Makes the panels and shares out what the server reports about their windows.
#pragma once

#include "platform/linux/x11/x11_selection_watch.h"
#include "platform/linux/x11/x11_trail_panel.h"
#include "support/log.h"

#include <vector>

namespace tarvik {

/// Main thread; outlives its panels. Needs a QGuiApplication, whose palette and font the trail takes. Where the display
/// lacks what a trail needs, one log line says so and the panels show nothing.
class X11TrailPanels final : public TrailPanels {
public:
    X11TrailPanels(X11MainConnection& connection, LogSink& log);
    X11TrailPanels(const X11TrailPanels&) = delete;
    X11TrailPanels& operator=(const X11TrailPanels&) = delete;

    std::unique_ptr<TrailPanel> make(const Screen& screen) override;
    std::chrono::milliseconds pause() const override { return framePause; }

private:
    /// 143 paintings a second: at least as many as most screens show, and a mouse that reports 125 times a second never
    /// waits. Painting cannot be timed by a screen's own frames, because nobody tells when they begin.
    static constexpr std::chrono::milliseconds framePause{7};

    void visibilityChanged(X11TrailPanel& panel);
    void handle(const xcb_generic_event_t& event);
    void stayOnTop();
    X11TrailPanel* shownPanel(xcb_window_t window) const;

    X11MainConnection& connection_;
    X11TrailVisual visual_;
    X11SelectionWatch compositor_;
    std::vector<X11TrailPanel*> shown_;
    /// How often the shown panels may still be raised: two programs that both want to be on top must not fight for
    /// ever.
    int raisesLeft_ = 0;
    std::shared_ptr<void> events_;
};

} // namespace tarvik
