#include "platform/linux/x11/x11_trail_panels.h"

#include <algorithm>

#include <malloc.h>

namespace tarvik {

namespace {

constexpr int mostRaises = 16;
constexpr int largeBlock = 256 * 1024; // bytes

/// The mask of a trail, as large as its screen, is to come from the system as pages that nobody has touched, and to go
/// back there. Left to itself glibc keeps such a block after it was freed once, and clears all of it for the next
/// trail.
void keepLargeBlocksOutOfTheHeap() { mallopt(M_MMAP_THRESHOLD, largeBlock); }

/// Stands in where no trail can be shown.
class NoPanel final : public TrailPanel {
public:
    void draw(const PathView&, const std::optional<std::string>&, Point) override {}
    void show() override { visible_ = true; }
    void hide() override { visible_ = false; }
    bool visible() const override { return visible_; }

private:
    bool visible_ = false;
};

} // namespace

X11TrailPanels::X11TrailPanels(X11MainConnection& connection, LogSink& log)
    : connection_(connection), visual_(connection), compositor_(connection, "_NET_WM_CM_S", [this] {
        for (X11TrailPanel* panel : shown_)
            panel->compositingChanged();
    }) {
    keepLargeBlocksOutOfTheHeap();
    if (visual_.problem().empty())
        events_ = connection_.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    else
        log.write("the trail cannot be shown: " + visual_.problem());
}

std::unique_ptr<TrailPanel> X11TrailPanels::make(const Screen& screen) {
    if (!visual_.problem().empty())
        return std::make_unique<NoPanel>();
    return std::make_unique<X11TrailPanel>(
        screen, X11TrailPanel::Environment{connection_, visual_, [this] { return compositor_.owned(); },
                                           [this](X11TrailPanel& panel) { visibilityChanged(panel); }});
}

void X11TrailPanels::visibilityChanged(X11TrailPanel& panel) {
    const bool wereShown = !shown_.empty();
    if (panel.visible())
        shown_.push_back(&panel);
    else
        shown_.erase(std::remove(shown_.begin(), shown_.end(), &panel), shown_.end());
    if (wereShown == !shown_.empty())
        return;
    // Other windows' comings and goings matter only while a trail is on the screen.
    connection_.watchRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, !shown_.empty());
    raisesLeft_ = mostRaises;
}

void X11TrailPanels::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
    case XCB_EXPOSE: {
        const auto& expose = reinterpret_cast<const xcb_expose_event_t&>(event);
        if (X11TrailPanel* panel = shownPanel(expose.window))
            panel->exposed(expose);
        break;
    }
    case XCB_MAP_NOTIFY:
        if (!shownPanel(reinterpret_cast<const xcb_map_notify_event_t&>(event).window))
            stayOnTop();
        break;
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (shownPanel(configured.above_sibling) && !shownPanel(configured.window))
            stayOnTop();
        break;
    }
    default:
        break;
    }
}

void X11TrailPanels::stayOnTop() {
    if (shown_.empty() || raisesLeft_ == 0)
        return;
    --raisesLeft_;
    for (const X11TrailPanel* panel : shown_)
        panel->raise();
    connection_.flush();
}

X11TrailPanel* X11TrailPanels::shownPanel(xcb_window_t window) const {
    const auto found = std::find_if(shown_.begin(), shown_.end(),
                                    [&](const X11TrailPanel* panel) { return panel->window() == window; });
    return found == shown_.end() ? nullptr : *found;
}

} // namespace tarvik
