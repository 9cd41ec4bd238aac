#include "plain_engine.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarvik::fuzz {
namespace {

/// From all points of a hold, the first of which is where the button went down.
std::string strokes(double minimum, const std::vector<Point>& points) {
    std::string letters;
    Point anchor = points.at(0);
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double dx = points[i].x - anchor.x;
        const double dy = points[i].y - anchor.y;
        if (minimum > std::hypot(dx, dy) || std::isnan(dx) || std::isnan(dy))
            continue;
        if (std::min(std::fabs(dx), std::fabs(dy)) * 1.4 > std::max(std::fabs(dx), std::fabs(dy)))
            continue;
        anchor = points[i];
        char letter = dy > 0 ? 'D' : 'U';
        if (std::fabs(dx) > std::fabs(dy))
            letter = dx > 0 ? 'R' : 'L';
        if (letters.size() < 6 && !letters.ends_with(letter))
            letters.push_back(letter);
    }
    return letters;
}

std::string arrows(const std::string& letters) {
    std::string all;
    for (const char letter : letters) {
        all += all.empty() ? "" : " ";
        all += letter == 'L' ? "\u2190" : letter == 'U' ? "\u2191" : letter == 'R' ? "\u2192" : "\u2193";
    }
    return all;
}

ActionKind wheelStep(ScrollBinding binding, bool up) {
    if (binding == ScrollBinding::tabs)
        return up ? ActionKind::previousTab : ActionKind::nextTab;
    if (binding == ScrollBinding::spaces)
        return up ? ActionKind::spaceLeft : ActionKind::spaceRight;
    return up ? ActionKind::previousWindow : ActionKind::nextWindow;
}

ScrollDelta opposite(const ScrollDelta& delta) { return {-delta.line, -delta.point, -delta.fixed}; }

} // namespace

void PlainEngine::setPreferences(const Preferences& preferences) {
    if (held_ && preferences.triggerButton != preferences_.triggerButton) {
        trace_.push_back("log gesture '" + directions() + "' cancelled");
        endHold();
    }
    preferences_ = preferences;
    trace_.push_back("trigger " + std::string(rawValue(preferences.triggerButton)));
    trace_.push_back(std::string("reversal ") + (preferences.reverseVertical ? "v" : "") +
                     (preferences.reverseHorizontal ? "h" : ""));
}

std::optional<PointerEvent> PlainEngine::handle(PointerEvent event) {
    const auto type = static_cast<std::uint32_t>(event.type);
    if (type == 4294967294 || type == 4294967295) {
        trace_.push_back("log event tap disabled by system (" + std::to_string(type) + "); re-enabling");
        trace_.push_back("enable");
        return event;
    }
    if (event.type == PointerEventType::holdLost) {
        if (held_) {
            trace_.push_back("log gesture '" + directions() + "' cancelled");
            endHold();
        }
        return std::nullopt;
    }
    if (event.type == PointerEventType::timeCame) {
        timeCame(event.time);
        return std::nullopt;
    }
    if (event.marker == 0x54415256494B4556)
        return event;
    if (event.type == PointerEventType::scrollWheel)
        return held_ ? wheelInHold(event) : wheelOutside(event);
    switch (step(event)) {
    case Step::down:
        return down(event);
    case Step::drag:
        return held_ ? drag(event) : event;
    case Step::up:
        return held_ ? up(event) : event;
    case Step::other:
        if (held_)
            otherButton(event);
        break;
    }
    return event;
}

std::optional<std::chrono::nanoseconds> PlainEngine::wakeAt() const {
    return drag_ ? drag_ : switchOff_ ? switchOff_ : wordGoes_;
}

void PlainEngine::otherButton(const PointerEvent& event) {
    using enum PointerEventType;
    const bool press = event.type == leftDown || event.type == rightDown || event.type == otherDown;
    const bool release = event.type == leftUp || event.type == rightUp || event.type == otherUp;
    if (press)
        drag_.reset();
    if (!(press || release) || event.button > 2)
        return;
    others_[event.button] = press;
    drag_.reset();
    const int down = others_[0] + others_[1] + others_[2];
    if (down < 2)
        switchOff_.reset();
    else if (press)
        switchOff_ = event.time + std::chrono::seconds(2);
}

void PlainEngine::timeCame(std::chrono::nanoseconds now) {
    const auto isDue = [now](auto& appointment) {
        const bool due = appointment && *appointment <= now;
        if (due)
            appointment.reset();
        return due;
    };
    if (isDue(wordGoes_))
        trace_.emplace_back("hide");
    if (isDue(drag_) && recording == 0) {
        trace_.emplace_back("log held still: the press goes to the application");
        endHold();
        auto press = press_;
        press.marker = 0x54415256494B4556;
        trace_.push_back("post " + text(press));
        if (preferences_.showTrail)
            say("Drag", now + std::chrono::milliseconds(800));
    }
    if (isDue(switchOff_)) {
        trace_.emplace_back("log all three buttons held: gestures switched off");
        endHold();
        trace_.emplace_back("drop");
        trace_.emplace_back("switch off");
        preferences_.enabled = false;
        say("Gestures Off", now + std::chrono::seconds(3));
    }
}

void PlainEngine::say(const char* word, std::chrono::nanoseconds until) {
    trace_.push_back(trailText(points_, 1, word));
    wordGoes_ = until;
}

PlainEngine::Step PlainEngine::step(const PointerEvent& event) const {
    using enum PointerEventType;
    const bool right = preferences_.triggerButton == TriggerButton::right;
    const bool middle = !right && event.button == 2;
    if ((right && event.type == rightDown) || (middle && event.type == otherDown))
        return Step::down;
    if ((right && event.type == rightDragged) || (middle && event.type == otherDragged))
        return Step::drag;
    if ((right && event.type == rightUp) || (middle && event.type == otherUp))
        return Step::up;
    return Step::other;
}

bool PlainEngine::gesturesAllowed() const {
    if (recording > 0)
        return true;
    const auto& excluded = preferences_.excludedApps;
    return preferences_.enabled && !(frontmost && std::count(excluded.begin(), excluded.end(), *frontmost) > 0);
}

std::string PlainEngine::directions() const { return strokes(minimum_, points_); }

std::string PlainEngine::label() const {
    if (recording > 0)
        return "Record: " + arrows(directions());
    const auto bound = preferences_.mappings.find(directions());
    if (bound == preferences_.mappings.end() || bound->second.action.kind == ActionKind::none)
        return arrows(directions());
    return arrows(directions()) + "   " + bound->second.title;
}

void PlainEngine::endHold() {
    held_ = false;
    drag_.reset();
    switchOff_.reset();
    wordGoes_.reset();
    trace_.emplace_back("hide");
}

std::optional<PointerEvent> PlainEngine::down(const PointerEvent& event) {
    if (!gesturesAllowed()) {
        endHold();
        return event;
    }
    if (wordGoes_)
        trace_.emplace_back("hide");
    wordGoes_.reset();
    switchOff_.reset();
    drag_.reset();
    if (preferences_.dragDelay.count() != 0 && recording == 0)
        drag_ = event.time + preferences_.dragDelay;
    held_ = true;
    std::fill(std::begin(others_), std::end(others_), false);
    wheelUsed_ = false;
    minimum_ = preferences_.minStroke * event.unitsPerPoint;
    press_ = event;
    points_ = {event.location};
    return std::nullopt;
}

std::optional<PointerEvent> PlainEngine::drag(const PointerEvent& event) {
    points_.push_back(event.location);
    if (!(std::hypot(event.location.x - press_.location.x, event.location.y - press_.location.y) <=
          5 * press_.unitsPerPoint))
        drag_.reset();
    if (preferences_.showTrail && !wheelUsed_ && !directions().empty())
        trace_.push_back(trailText(points_, points_.size(), label()));
    return std::nullopt;
}

std::optional<PointerEvent> PlainEngine::up(const PointerEvent& event) {
    endHold();
    const auto drawn = directions();
    const auto bound = preferences_.mappings.find(drawn);
    const bool isBound = bound != preferences_.mappings.end();
    trace_.push_back("log gesture '" + drawn + "' scrolled=" + (wheelUsed_ ? "true" : "false") + " -> " +
                     (isBound ? bound->second.title : "unmapped"));
    if (wheelUsed_)
        return std::nullopt;
    if (drawn.empty()) {
        auto first = press_;
        auto second = event;
        first.location = event.location;
        first.marker = second.marker = 0x54415256494B4556;
        trace_.push_back("post " + text(first));
        trace_.push_back("post " + text(second));
    } else if (recording > 0) {
        --recording;
        trace_.push_back("record " + drawn);
    } else if (isBound) {
        afterwards.push_back(text(bound->second.action, points_[0]));
    }
    return std::nullopt;
}

std::optional<PointerEvent> PlainEngine::wheelInHold(const PointerEvent& event) {
    drag_.reset();
    if (preferences_.scrollBinding == ScrollBinding::none || recording > 0)
        return event;
    wheelUsed_ = true;
    trace_.emplace_back("hide");
    if (event.vertical.line == 0)
        return std::nullopt;
    if (lastStep_ && event.time - *lastStep_ <= std::chrono::milliseconds(120))
        return std::nullopt;
    lastStep_ = event.time;
    const bool up = (event.vertical.line > 0) != event.directionInverted;
    trace_.push_back(text(GestureAction{wheelStep(preferences_.scrollBinding, up), {}}, std::nullopt));
    return std::nullopt;
}

PointerEvent PlainEngine::wheelOutside(PointerEvent event) const {
    if (event.scrollPhase != 0 || event.momentumPhase != 0)
        return event;
    if (preferences_.reverseVertical)
        event.vertical = opposite(event.vertical);
    if (preferences_.reverseHorizontal)
        event.horizontal = opposite(event.horizontal);
    return event;
}

} // namespace tarvik::fuzz
