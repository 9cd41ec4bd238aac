#include "platform/macos/quartz_event_tap.h"

#include "platform/macos/quartz_event.h"
#include "support/guarded.h"

#include <cstdlib>
#include <string>
#include <utility>

namespace tarvik {
namespace {

/// Seconds between two looks at the tap, and by how much they may be late.
constexpr CFTimeInterval checkInterval = 1.0;
constexpr CFTimeInterval checkTolerance = 0.1;

bool isNotice(CGEventType type) {
    return type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput;
}

} // namespace

QuartzEventTap::QuartzEventTap(MainQueue& mainQueue, LogSink& log, Clock clock)
    : mainQueue_(mainQueue), log_(log), clock_(std::move(clock)), mainThread_(std::this_thread::get_id()) {}

QuartzEventTap::~QuartzEventTap() { stop(); }

bool QuartzEventTap::start(Handler handler) {
    stop();
    port_ = TapPort::create(callback, this);
    if (!port_)
        return false;
    handler_ = std::move(handler);
    timer_.emplace(checkInterval, checkTolerance, [this] { check(); });
    installed_ = true;
    return true;
}

void QuartzEventTap::stop() {
    installed_ = false;
    timer_.reset();
    alarm_.reset();
    wakeAt_.reset();
    port_.reset();
    handler_ = nullptr;
    suspended_ = dead_ = pressOnItsWay_ = false;
}

CGEventRef QuartzEventTap::callback(CGEventTapProxy, CGEventType type, CGEventRef event, void* self) {
    if (!self)
        return event;
    auto* tap = static_cast<QuartzEventTap*>(self);
    if (std::this_thread::get_id() != tap->mainThread_)
        std::abort(); // the source is on the main run loop: anything else is a programming error
    return tap->decide(type, event);
}

CGEventRef QuartzEventTap::decide(CGEventType type, CGEventRef event) {
    // The system also sends a notice when we have switched the tap off ourselves.
    if (suspended_ && isNotice(type))
        return event;
    const bool nested = std::exchange(deciding_, true);
    drain();
    const auto before = pointerEvent(type, event, clock_());
    const bool waits = waitsForPress(before);
    const auto after = waits ? std::nullopt : ask(before);
    deciding_ = nested;
    if (isNotice(type))
        return event;
    if (!after)
        return nullptr;
    if (type == kCGEventScrollWheel)
        writeScroll(event, before, *after);
    return event;
}

std::optional<PointerEvent> QuartzEventTap::ask(const PointerEvent& event) {
    Decision decision = std::optional(event);
    guarded(log_, "tap", [&] { decision = handler_(event); });
    if (decision.wakeAt != wakeAt_) {
        wakeAt_ = decision.wakeAt;
        alarm_.reset();
        if (wakeAt_) {
            const std::chrono::duration<double> delay = *wakeAt_ - clock_();
            alarm_.emplace(delay.count(), [this, at = *wakeAt_] { timeCame(at); });
        }
    }
    return std::move(decision.event);
}

void QuartzEventTap::timeCame(std::chrono::nanoseconds time) {
    drain();
    PointerEvent event;
    event.time = time;
    // The left button's events do not come to the tap.
    if (CGEventSourceButtonState(kCGEventSourceStateCombinedSessionState, kCGMouseButtonLeft)) {
        event.type = PointerEventType::leftDown;
        ask(event);
    }
    wakeAt_.reset();
    event.type = PointerEventType::timeCame;
    handingOn_ = true;
    ask(event);
    handingOn_ = false;
}

bool QuartzEventTap::waitsForPress(const PointerEvent& event) {
    using enum PointerEventType;
    if (!pressOnItsWay_ || (event.marker == selfEventMarker && event.type != rightDown && event.type != otherDown))
        return false;
    switch (event.type) {
    case rightDown:
    case otherDown:
        pressOnItsWay_ = false;
        return false;
    case rightDragged:
    case otherDragged:
        return true;
    case rightUp:
    case otherUp: {
        // After the press, or the application's button would never come up again.
        auto later = event;
        later.marker = selfEventMarker;
        post(later);
        return true;
    }
    default:
        return false;
    }
}

void QuartzEventTap::enable() {
    if (!port_ || suspended_)
        return;
    port_->enable(true);
    if (!AXIsProcessTrusted())
        suspend();
}

void QuartzEventTap::check() {
    if (!installed_ || deciding_)
        return;
    if (!AXIsProcessTrusted())
        return suspend();
    if (!port_ || !port_->valid())
        return rebuild();
    if (std::exchange(suspended_, false)) {
        port_->enable(true);
        log_.write("event tap enabled again: the Accessibility permission is back");
    } else if (!port_->enabled()) {
        port_->enable(true);
        log_.write("event tap was switched off without a notice; enabled again");
        loseHold();
    }
}

void QuartzEventTap::suspend() {
    if (port_)
        port_->enable(false);
    if (std::exchange(suspended_, true))
        return;
    log_.write("event tap disabled: the Accessibility permission is gone");
    loseHold();
}

void QuartzEventTap::rebuild() {
    // The dead one first: no two taps may answer for one event.
    port_.reset();
    port_ = TapPort::create(callback, this);
    suspended_ = false;
    if (port_)
        log_.write("event tap had died; made anew");
    else if (!dead_)
        log_.write("event tap has died and cannot be made anew; trying again every second");
    if (!dead_)
        loseHold();
    dead_ = !port_;
}

void QuartzEventTap::loseHold() {
    PointerEvent lost;
    lost.type = PointerEventType::holdLost;
    lost.time = clock_();
    pressOnItsWay_ = false;
    ask(lost);
}

void QuartzEventTap::post(const PointerEvent& event) {
    const auto posted = postableEvent(event);
    if (!posted)
        return;
    pressOnItsWay_ = pressOnItsWay_ || handingOn_;
    CGEventPost(kCGHIDEventTap, posted.get());
}

void QuartzEventTap::afterEvent(std::function<void()> task) {
    mainQueue_.post([this, task = std::move(task)] { guarded(log_, "tap", task); });
}

void QuartzEventTap::run(std::function<void()> command) {
    {
        const std::lock_guard lock(mutex_);
        commands_.push_back(std::move(command));
    }
    if (std::this_thread::get_id() == mainThread_ && !deciding_)
        drain();
    else
        mainQueue_.post([this] { drain(); });
}

void QuartzEventTap::drain() {
    std::unique_lock lock(mutex_);
    const auto commands = std::exchange(commands_, {});
    lock.unlock();
    for (const auto& command : commands)
        guarded(log_, "tap", command);
}

} // namespace tarvik
