// What becomes of a hold: X11PointerFilter from the press that is taken to the release of the last button.
#include "platform/linux/x11/x11_pointer_filter.h"

#include "platform/linux/x11/x11_trigger.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <utility>

namespace tarvik {
namespace {

/// From the raw release to the release itself; the server sends both in one step.
constexpr std::chrono::milliseconds longestRelease(20);

} // namespace

void X11PointerFilter::begin(const XiEvent& event) {
    if (decide(events_.make(event, triggerOf(trigger_).down, triggerOf(trigger_).button))) {
        allow(event, XIReplayDevice);
        return;
    }
    hold_.emplace(Hold{event.source, event.master, event.button, false, event.location, event.buttonsBefore, {}});
    clicks_.watch();
    allow(event, XIAsyncDevice);
    wheel_.begin();
    devices_.prepare(event.source); // the click shall wait for nothing
    devices_.onePointer();
}

void X11PointerFilter::motion(const XiEvent& event) {
    wheel(event);
    // A turn that passed may have ended the hold.
    if (!hold_ || hold_->decided || event.location == hold_->location)
        return;
    hold_->location = event.location;
    hold_->moved = true;
    decide(events_.make(event, triggerOf(trigger_).drag, triggerOf(trigger_).button));
}

void X11PointerFilter::wheel(const XiEvent& event) {
    for (const auto& turn : wheel_.turns(event)) {
        // What is undone after the hold's end in the server would reach the application.
        if (!hold_->others.empty() || !mayBeOver())
            wheel_.takeBack(turn);
        if (hold_->decided)
            continue;
        hold_->moved = true;
        auto scroll = events_.make(event, PointerEventType::scrollWheel, triggerOf(trigger_).button);
        scroll.vertical = turn.vertical;
        scroll.horizontal = turn.horizontal;
        scroll.directionInverted = turn.directionInverted;
        // With other buttons down there is no way to the application, and the turn is dropped.
        if (!decide(std::move(scroll)) || !hold_->others.empty() || mayBeOver())
            continue;
        const auto outcome = wheelPass_.pass(turn, hold_->source, hold_->master, hold_->button);
        if (outcome != X11WheelPass::Outcome::resumed) {
            passEnded(outcome, event);
            return;
        }
    }
}

void X11PointerFilter::passEnded(X11WheelPass::Outcome outcome, XiEvent event) {
    if (outcome == X11WheelPass::Outcome::released) {
        if (const auto pointer = probe_.state(hold_->master))
            event.location = pointer->location;
        hold_->decided = true;
        decide(events_.make(event, triggerOf(trigger_).up, triggerOf(trigger_).button));
    } else {
        lose("another program has the pointer");
    }
    // Another button that went down before the trigger went up has kept the grab, and ends the hold.
    const auto& events = queue_.waiting();
    const bool goesOn = std::any_of(events.begin(), events.end(), [this](const XiEvent& waiting) {
        return waiting.type == XiEventType::press && waiting.button != hold_->button && !isWheelButton(waiting.button);
    });
    if (!goesOn)
        end();
}

void X11PointerFilter::rawRelease(const XiEvent& event) {
    if (!hold_) {
        if (clicks_.waiting())
            clicks_.settle();
        return;
    }
    if (!isTriggerOfHold(event) || wheelPass_.isOwn(event))
        return;
    hold_->handUp = true;
    if (!hold_->decided && !releaseComes())
        hold_->releaseDue = std::chrono::steady_clock::now() + longestRelease;
}

void X11PointerFilter::rawPress(const XiEvent& event) {
    // A release that has not come by now is left to that of this press.
    if (hold_ && isTriggerOfHold(event))
        hold_->releaseDue.reset();
}

bool X11PointerFilter::isTriggerOfHold(const XiEvent& raw) const {
    return raw.source == hold_->source && devices_.buttons().logical(raw.button) == hold_->button;
}

void X11PointerFilter::missRelease() {
    if (!releaseDue() || std::chrono::steady_clock::now() < *releaseDue())
        return;
    hold_->releaseDue.reset();
    XSync(display_, False);
    if (hold_->decided || releaseComes())
        return;
    lose("another program has taken its mouse");
    const auto pointer = probe_.state(hold_->master);
    if (pointer && pointer->down.none()) {
        end(); // the release has gone to somebody else
        return;
    }
    // For the pointer the button is still down, and the mouse does not move it any more.
    if (const auto standIn = devices_.testPointer(hold_->master))
        devices_.fakeButton(*standIn, hold_->button, false);
}

bool X11PointerFilter::releaseWaiting() {
    queue_.pull();
    const auto& events = queue_.waiting();
    return std::any_of(events.begin(), events.end(), [this](const XiEvent& event) {
        return event.type == XiEventType::release && event.button == hold_->button && !wheelPass_.isOwn(event);
    });
}

bool X11PointerFilter::mayBeOver() { return hold_->handUp || releaseWaiting(); }

bool X11PointerFilter::releaseComes() {
    if (releaseWaiting())
        return true;
    // A press that waits for our answer keeps what follows in the server. And of a press that was answered late the
    // server drops the release, and the next press with it, when the mouse has pressed again meanwhile.
    const auto& events = queue_.waiting();
    return std::any_of(events.begin(), events.end(), [this](const XiEvent& event) {
        return event.type == XiEventType::press ||
               (event.type == XiEventType::rawPress && event.source == hold_->source &&
                devices_.buttons().logical(event.button) == hold_->button);
    });
}

std::optional<PointerEvent> X11PointerFilter::decide(PointerEvent event) {
    const auto time = event.time;
    auto decision = hooks_.handler(std::move(event));
    if (decision.wakeAt && decision.wakeAt != wakeAt_)
        wakeAtHere_ = std::chrono::steady_clock::now() + (*decision.wakeAt - time);
    wakeAt_ = decision.wakeAt;
    return std::move(decision.event);
}

void X11PointerFilter::tellOfOther(const XiEvent& event, bool press) {
    if (!hold_->decided)
        decide(events_.make(event, typeOf(event.button, press), buttonOf(event.button)));
}

void X11PointerFilter::timeCame() {
    hooks_.beforeEvent();
    if (!wakeAt_)
        return;
    auto notice = events_.notice(PointerEventType::timeCame);
    notice.time = *std::exchange(wakeAt_, std::nullopt);
    decide(std::move(notice));
    const auto posted = std::exchange(posted_, {});
    if (!hold_ || hold_->decided || posted.empty())
        return;
    hold_->decided = true;
    dragStart_.begin(X11PointerEvents::returned(posted.front()));
}

void X11PointerFilter::dropHold() {
    if (!hold_)
        return;
    releaseButtons();
    hold_->decided = true;
    hold_->others.clear();
    otherClicks_.clear();
}

void X11PointerFilter::releaseButtons() {
    // The releases come to us; those of the hand change nothing any more. What two mice hold is up when both are.
    for (const auto& [source, button] : devices_.buttonsDown(hold_->master)) {
        if (!hold_->downBefore[static_cast<std::size_t>(button)])
            devices_.fakeButton(source, button, false);
    }
}

void X11PointerFilter::lose(const char* reason) {
    if (hold_->decided)
        return;
    hold_->decided = true;
    log_.write(std::string("hold lost: ") + reason);
    decide(events_.notice(PointerEventType::holdLost));
}

void X11PointerFilter::release(const XiEvent& event) {
    if (!wheelPass_.isOwn(event))
        releaseOfHold(event);
    auto stillDown = event.buttonsBefore;
    stillDown.reset(static_cast<std::size_t>(event.button));
    for (const int wheelButton : {4, 5, 6, 7})
        stillDown.reset(static_cast<std::size_t>(wheelButton));
    // The server keeps the grab until the last button is up, and what we gave back before that would come to us. For a
    // turn that is handed on the trigger is up in between.
    if (stillDown.none() && !wheelPass_.moreToCome())
        end();
}

void X11PointerFilter::releaseOfHold(const XiEvent& event) {
    if (event.button == hold_->button && !hold_->decided) {
        hold_->releaseDue.reset();
        if (isByHand(event)) {
            hold_->decided = true;
            decide(events_.make(event, triggerOf(trigger_).up, triggerOf(trigger_).button));
        } else {
            lose("its mouse has gone");
        }
        return;
    }
    const auto other = std::find_if(hold_->others.begin(), hold_->others.end(),
                                    [&](const auto& pressed) { return pressed.first == event.button; });
    if (other == hold_->others.end())
        return;
    otherClicks_.push_back({other->first, other->second, hold_->master, static_cast<int>(event.location.x),
                            static_cast<int>(event.location.y)});
    hold_->others.erase(other);
    tellOfOther(event, false);
}

bool X11PointerFilter::isByHand(const XiEvent& release) {
    // A click needs no answer of the server first: a device that has gone refuses to make it. With a second pointer it
    // may have gone there, and would click.
    const bool click = !hold_->moved && !hold_->devicesChanged && release.source == hold_->source;
    hold_->unsure = click && devices_.onePointer() && devices_.prepare(release.source) == release.source;
    if (hold_->unsure)
        return true;
    // The server tells of the loss in the same breath, before the release or after it.
    XSync(display_, False);
    queue_.pull();
    return !(hold_->devicesChanged || queue_.tellsOfDevices()) || devices_.serves(release.source, release.master);
}

void X11PointerFilter::end() {
    wheel_.announce(hold_->source);
    const bool unsure = std::exchange(hold_, {})->unsure;
    reversal_.holdEnded();
    for (const auto& posted : std::exchange(posted_, {})) {
        // A click is posted as press and release; the device makes both.
        if (posted.type == triggerOf(trigger_).down && posted.native)
            clicks_.add(X11PointerEvents::returned(posted, unsure));
    }
    for (const auto& click : std::exchange(otherClicks_, {}))
        clicks_.add(click);
    clicks_.settle();
    // An action may want to grab the pointer itself. The server has ended our grab in the step that sent the release.
    for (const auto& task : std::exchange(tasks_, {}))
        task();
}

} // namespace tarvik
