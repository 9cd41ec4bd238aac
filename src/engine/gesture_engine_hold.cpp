// What a button does by being held: its press goes to the application, or, with the two others, the gestures go off.
#include "engine/gesture_engine.h"

#include <utility>

namespace tarvik {
namespace {

/// How long all three buttons are held to switch the gestures off.
constexpr std::chrono::seconds switchOffDelay(2);

/// How long the word for a drag, and that for gestures being off, can be read.
constexpr std::chrono::milliseconds dragCueTime(800);
constexpr std::chrono::seconds offCueTime(3);

} // namespace

void GestureEngine::handleOtherButton(const PointerEvent& event) {
    using enum PointerEventType;
    const bool press = event.type == leftDown || event.type == rightDown || event.type == otherDown;
    const bool release = event.type == leftUp || event.type == rightUp || event.type == otherUp;
    if (press)
        noDrag();
    if ((!press && !release) || event.button < 0 || event.button >= static_cast<std::int64_t>(otherButtons_.size()))
        return;
    otherButtons_.set(static_cast<std::size_t>(event.button), press);
    if (otherButtons_.count() < 2)
        appointment_.reset();
    else if (press)
        appointment_ = {Due::switchOff, event.time + switchOffDelay};
}

void GestureEngine::timeCame(std::chrono::nanoseconds now) {
    if (!appointment_ || now < appointment_->at)
        return;
    switch (std::exchange(appointment_, std::nullopt)->what) {
    case Due::handOn:
        if (!onRecord_)
            handOn(now);
        break;
    case Due::switchOff:
        switchOff(now);
        break;
    case Due::hideCue:
        trail_.hide();
        break;
    }
}

void GestureEngine::handOn(std::chrono::nanoseconds now) {
    log_.write("held still: the press goes to the application");
    const auto path = points_;
    auto down = *std::move(downEvent_);
    reset();
    down.marker = selfEventMarker;
    tap_.post(down);
    if (preferences_->showTrail)
        showCue(path, "Drag", now + dragCueTime);
}

void GestureEngine::switchOff(std::chrono::nanoseconds now) {
    log_.write("all three buttons held: gestures switched off");
    const auto path = points_;
    reset();
    tap_.dropHold();
    auto off = std::make_shared<Preferences>(*preferences_);
    off->enabled = false;
    preferences_ = std::move(off);
    onSwitchOff_();
    showCue(path, "Gestures Off", now + offCueTime);
}

void GestureEngine::noDrag() {
    if (appointment_ && appointment_->what == Due::handOn)
        appointment_.reset();
}

void GestureEngine::showCue(const std::shared_ptr<Path>& path, const char* text, std::chrono::nanoseconds until) {
    trail_.update({path, 1}, text); // a single point is no line
    appointment_ = {Due::hideCue, until};
}

} // namespace tarvik
