#include "engine/gesture_engine.h"

#include "engine/wheel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvik {
namespace {

/// kCGMouseButtonCenter.
constexpr std::int64_t middleButton = 2;

/// How far, in points, the pointer may be from the press while the button counts as held still: more than the point or
/// two by which a resting hand moves a mouse, and less than the eight or ten at which toolkits begin a drag.
constexpr double stillness = 5;

} // namespace

GestureEngine::GestureEngine(EventTap& tap, Trail& trail, Actions& actions, const Frontmost& frontmost, LogSink& log,
                             std::function<void()> onSwitchOff)
    : tap_(tap)
    , trail_(trail)
    , actions_(actions)
    , frontmost_(frontmost)
    , log_(log)
    , onSwitchOff_(std::move(onSwitchOff)) {}

bool GestureEngine::start() {
    if (tap_.installed())
        return true;
    const bool started = tap_.start([this](PointerEvent event) {
        auto decided = handle(std::move(event));
        return Decision(std::move(decided), wakeAt());
    });
    log_.write(started ? "event tap started" : "event tap creation failed");
    return started;
}

std::optional<PointerEvent> GestureEngine::handle(PointerEvent event) {
    if (event.type >= PointerEventType::firstNotice)
        return handleNotice(std::move(event));
    if (event.marker == selfEventMarker)
        return event;
    if (event.type == PointerEventType::scrollWheel) {
        if (tracking_)
            return handleScroll(std::move(event));
        reverseScrollIfNeeded(event, *preferences_);
        return event;
    }
    const auto eventPhase = phase(event);
    if (!eventPhase) {
        if (tracking_)
            handleOtherButton(event);
        return event;
    }
    switch (*eventPhase) {
    case Phase::down:
        return handleDown(std::move(event));
    case Phase::drag:
        return handleDrag(std::move(event));
    case Phase::up:
        break;
    }
    return handleUp(std::move(event));
}

std::optional<PointerEvent> GestureEngine::handleNotice(PointerEvent&& event) {
    switch (event.type) {
    case PointerEventType::timeCame:
        timeCame(event.time);
        return std::nullopt;
    case PointerEventType::holdLost:
        cancel();
        return std::nullopt;
    default:
        log_.write("event tap disabled by system (" + std::to_string(static_cast<std::uint32_t>(event.type)) +
                   "); re-enabling");
        tap_.enable();
        return event;
    }
}

void GestureEngine::setPreferences(std::shared_ptr<const Preferences> preferences) {
    // The release of the old button will have no phase: without this the hold would have no end.
    if (preferences->triggerButton != preferences_->triggerButton)
        cancel();
    preferences_ = std::move(preferences);
    labelDirections_.reset();
    tap_.setTriggerButton(preferences_->triggerButton);
    tap_.setWheelReversal({preferences_->reverseVertical, preferences_->reverseHorizontal});
}

void GestureEngine::setOnRecord(RecordHandler handler) {
    onRecord_ = std::move(handler);
    labelDirections_.reset();
}

std::optional<GestureEngine::Phase> GestureEngine::phase(const PointerEvent& event) const {
    const bool right = preferences_->triggerButton == TriggerButton::right;
    const bool middle = !right && event.button == middleButton;
    switch (event.type) {
    case PointerEventType::rightDown:
        return right ? std::optional(Phase::down) : std::nullopt;
    case PointerEventType::rightDragged:
        return right ? std::optional(Phase::drag) : std::nullopt;
    case PointerEventType::rightUp:
        return right ? std::optional(Phase::up) : std::nullopt;
    case PointerEventType::otherDown:
        return middle ? std::optional(Phase::down) : std::nullopt;
    case PointerEventType::otherDragged:
        return middle ? std::optional(Phase::drag) : std::nullopt;
    case PointerEventType::otherUp:
        return middle ? std::optional(Phase::up) : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<PointerEvent> GestureEngine::handleDown(PointerEvent&& event) {
    // A waiting recorder overrides both the switch and the exclusions.
    const bool refused = !onRecord_ && (!preferences_->enabled || isFrontmostExcluded());
    if (refused) {
        reset();
        return event;
    }
    begin(std::move(event));
    return std::nullopt;
}

void GestureEngine::begin(PointerEvent&& down) {
    if (appointment_ && appointment_->what == Due::hideCue)
        trail_.hide();
    appointment_.reset();
    // Who records a gesture may take their time to draw it.
    if (preferences_->dragDelay.count() > 0 && !onRecord_)
        appointment_ = {Due::handOn, down.time + preferences_->dragDelay};
    tracking_ = true;
    usedScroll_ = false;
    otherButtons_.reset();
    points_ = std::make_shared<Path>();
    points_->append(down.location);
    recognizer_ = {preferences_->minStroke * down.unitsPerPoint, down.location, {}};
    downEvent_ = std::move(down);
}

std::optional<PointerEvent> GestureEngine::handleDrag(PointerEvent&& event) {
    if (!tracking_)
        return event;
    points_->append(event.location);
    recognizer_.add(event.location);
    if (appointment_ &&
        !(std::hypot(event.location.x - downEvent_->location.x, event.location.y - downEvent_->location.y) <=
          stillness * downEvent_->unitsPerPoint))
        noDrag();
    if (preferences_->showTrail && !usedScroll_ && !recognizer_.directions.empty())
        trail_.update({points_, points_->size()}, currentLabel());
    return std::nullopt;
}

std::optional<PointerEvent> GestureEngine::handleUp(PointerEvent&& event) {
    if (!tracking_)
        return event;
    const std::string directions = recognizer_.directions;
    const bool scrolled = usedScroll_;
    const Point start = (*points_)[0];
    auto down = std::move(downEvent_);
    reset();

    const auto* bound = boundAction(directions);
    log_.write("gesture '" + directions + "' scrolled=" + (scrolled ? "true" : "false") + " -> " +
               (bound ? bound->title : "unmapped"));
    if (scrolled)
        return std::nullopt;
    if (directions.empty()) {
        replayClick(std::move(down), event);
    } else if (onRecord_) {
        const auto record = std::exchange(onRecord_, nullptr);
        labelDirections_.reset();
        record(directions);
    } else if (bound) {
        tap_.afterEvent([&actions = actions_, action = bound->action, start] { actions.perform(action, start); });
    }
    return std::nullopt;
}

std::optional<PointerEvent> GestureEngine::handleScroll(PointerEvent&& event) {
    noDrag();
    const auto binding = preferences_->scrollBinding;
    if (binding == ScrollBinding::none || onRecord_)
        return event;
    usedScroll_ = true;
    trail_.hide();
    const auto lines = physicalLines(event);
    if (lines == 0)
        return std::nullopt;
    if (!lastScroll_ || event.time - *lastScroll_ > wheelDebounce) {
        lastScroll_ = event.time;
        actions_.perform({wheelAction(binding, lines), {}}, std::nullopt);
    }
    return std::nullopt;
}

void GestureEngine::cancel() {
    if (!tracking_)
        return;
    log_.write("gesture '" + recognizer_.directions + "' cancelled");
    reset();
}

void GestureEngine::reset() {
    tracking_ = false;
    usedScroll_ = false;
    points_.reset();
    downEvent_.reset();
    appointment_.reset();
    trail_.hide();
}

void GestureEngine::replayClick(std::optional<PointerEvent> down, const PointerEvent& up) {
    if (!down)
        return;
    // Where the button was released, even after a movement too short for a stroke.
    down->location = up.location;
    for (auto event : {*std::move(down), up}) {
        event.marker = selfEventMarker;
        tap_.post(event);
    }
}

bool GestureEngine::isFrontmostExcluded() const {
    const auto& excluded = preferences_->excludedApps;
    if (excluded.empty())
        return false;
    const auto application = frontmost_.frontmostApplication();
    return application && std::find(excluded.begin(), excluded.end(), *application) != excluded.end();
}

const BoundAction* GestureEngine::boundAction(const std::string& directions) const {
    const auto found = preferences_->mappings.find(directions);
    return found == preferences_->mappings.end() ? nullptr : &found->second;
}

std::string GestureEngine::label(const std::string& directions) const {
    auto arrows = Gesture::arrows(directions);
    if (onRecord_)
        return "Record: " + arrows;
    const auto* bound = boundAction(directions);
    if (!bound || bound->action.kind == ActionKind::none)
        return arrows;
    return arrows + "   " + bound->title;
}

const std::string& GestureEngine::currentLabel() {
    if (labelDirections_ != recognizer_.directions) {
        labelDirections_ = recognizer_.directions;
        label_ = label(recognizer_.directions);
    }
    return label_;
}

} // namespace tarvik
