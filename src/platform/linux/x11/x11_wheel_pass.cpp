#include "platform/linux/x11/x11_wheel_pass.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <chrono>

namespace tarvik {
namespace {

/// How long a window manager may look at a turn of the wheel. The pointer waits for it, with us or without us; but with
/// the wait below it stays short of what the watchdog takes for a tap that hangs.
constexpr std::chrono::milliseconds longestWait(500);
/// The same at a turn that came in between: clicks that follow wait for us meanwhile.
constexpr std::chrono::milliseconds longestLook(100);

} // namespace

X11WheelPass::Outcome X11WheelPass::pass(const WheelTurn& turn, int source, int master, int button) {
    forgetExpected();
    late_.reset();
    unanswered_.reset();
    devices_.prepare(source);
    devices_.prepare(turn.source);
    expected_.push_back({XiEventType::release, button, NextRequest(display_)});
    devices_.fakeButton(source, button, false);
    wheel_.repeat(turn);
    // While the window manager looks at the turn, a press would follow the turn to the application.
    const bool free = probe_.waitUntilFree(master, longestWait);
    const auto pressRequest = NextRequest(display_);
    queue_.pull();
    if (handLetGo(source, button, pressRequest))
        return Outcome::released;
    if (!free)
        return Outcome::taken;

    unanswered_ = expected_.emplace_back(Expected{XiEventType::press, button, pressRequest});
    devices_.fakeButton(source, button, true);
    auto press = findPress();
    // Another turn may have been quicker, and the window manager looks at that one first.
    if (!press && !wentElsewhere(master, button) && probe_.waitUntilFree(master, longestLook))
        press = findPress();
    if (press) {
        // At once: the next turn may be waiting before it, and would find the pointer frozen.
        XIAllowEvents(display_, master, XIAsyncDevice, press->time);
        expected_.back().serial = press->serial;
        late_.reset();
        unanswered_.reset();
        if (handLetGo(source, button, pressRequest)) // nobody else would ever release the button
            devices_.fakeButton(source, button, false);
        return Outcome::resumed;
    }
    const bool clicked = wentElsewhere(master, button);
    queue_.pull();
    const bool letGo = handLetGo(source, button, NextRequest(display_));
    devices_.fakeButton(source, button, false);
    return letGo && !clicked ? Outcome::released : Outcome::taken;
}

bool X11WheelPass::handLetGo(int source, int button, unsigned long before) const {
    unsigned long ownSeen = 0;
    for (const auto& event : queue_.waiting()) {
        if (event.type != XiEventType::rawRelease || event.source != source ||
            devices_.buttons().logical(event.button) != button || event.serial >= before)
            continue;
        // Of two with the serial number of a request of ours the first is ours.
        if (!isOwn(event) || event.serial == ownSeen)
            return true;
        ownSeen = event.serial;
    }
    return false;
}

bool X11WheelPass::wentElsewhere(int master, int button) const {
    // A press that waits for our answer, which is another mouse's, keeps ours in the server; and so does another client
    // that has the pointer frozen, for which the button is up.
    const auto& events = queue_.waiting();
    if (std::any_of(events.begin(), events.end(), [](const XiEvent& e) { return e.type == XiEventType::press; }))
        return false;
    const auto pointer = probe_.state(master);
    return pointer && pointer->down[static_cast<std::size_t>(button)];
}

bool X11WheelPass::isOwn(const XiEvent& release) const {
    // The server deals with what a request fakes before it reads the next one, so the serial number tells it from what
    // the same button did before.
    const bool raw = release.type == XiEventType::rawRelease;
    const Expected event{XiEventType::release, raw ? devices_.buttons().logical(release.button) : release.button,
                         release.serial};
    return std::find(expected_.begin(), expected_.end(), event) != expected_.end();
}

bool X11WheelPass::moreToCome() const {
    const auto& events = queue_.waiting();
    return std::any_of(expected_.begin(), expected_.end(), [&events](const Expected& own) {
        return std::any_of(events.begin(), events.end(), [&own](const XiEvent& event) {
            return Expected{event.type, event.button, event.serial} == own;
        });
    });
}

X11WheelPass::Press X11WheelPass::claim(const XiEvent& press) {
    const Expected event{XiEventType::press, press.button, press.serial};
    const auto found = std::find(expected_.begin(), expected_.end(), event);
    const bool late = unanswered_ == event || late_ == Late{press.source, press.button, press.time};
    // Each of them comes once. One by hand that was taken for ours would never be answered.
    if (found != expected_.end())
        expected_.erase(found);
    else if (!late)
        return Press::byHand;
    if (!late)
        return Press::answered;
    late_.reset();
    unanswered_.reset();
    return Press::late;
}

std::optional<XiEvent> X11WheelPass::findPress() {
    XSync(display_, False);
    queue_.pull();
    for (const auto& event : queue_.waiting()) {
        // What the device did is reported at once. No press of the hand has the same time: one of the two releases it.
        if (event.type == XiEventType::rawPress && event.serial == unanswered_->serial &&
            devices_.buttons().logical(event.button) == unanswered_->button)
            late_ = {event.source, unanswered_->button, event.time};
        if (event.type != XiEventType::press || event.button != unanswered_->button ||
            event.serial < unanswered_->serial)
            continue;
        if (event.serial == unanswered_->serial || late_ == Late{event.source, event.button, event.time})
            return event;
    }
    return std::nullopt;
}

void X11WheelPass::forgetExpected() {
    const auto& events = queue_.waiting();
    while (!expected_.empty() && (events.empty() || expected_.front().serial < events.front().serial))
        expected_.pop_front();
}

} // namespace tarvik
