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
    devices_.prepare(source);
    devices_.prepare(turn.source);
    expected_.emplace_back(XiEventType::release, NextRequest(display_));
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

    expected_.emplace_back(XiEventType::press, pressRequest);
    devices_.fakeButton(source, button, true);
    auto press = pressOf(pressRequest);
    // Another turn may have been quicker, and the window manager looks at that one first.
    if (!press && !wentElsewhere(master, button) && probe_.waitUntilFree(master, longestLook))
        press = pressOf(pressRequest);
    if (press) {
        // At once: the next turn may be waiting before it, and would find the pointer frozen.
        XIAllowEvents(display_, master, XIAsyncDevice, press->time);
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

bool X11WheelPass::isOwn(const XiEvent& event) const {
    // The server deals with what a request fakes before it reads the next one, so the serial number tells.
    const auto type = event.type == XiEventType::rawRelease ? XiEventType::release
                      : event.type == XiEventType::rawPress ? XiEventType::press
                                                            : event.type;
    if (type == XiEventType::press && late_ == std::pair(event.source, event.time))
        return true;
    return std::find(expected_.begin(), expected_.end(), std::pair(type, event.serial)) != expected_.end();
}

std::optional<XiEvent> X11WheelPass::pressOf(unsigned long request) {
    XSync(display_, False);
    queue_.pull();
    for (const auto& event : queue_.waiting()) {
        // What the device did is reported at once. No press of the hand has the same time: one of the two releases it.
        if (event.type == XiEventType::rawPress && event.serial == request)
            late_.emplace(event.source, event.time);
        if (event.type == XiEventType::press && isOwn(event) && event.serial >= request)
            return event;
    }
    return std::nullopt;
}

void X11WheelPass::forgetExpected() {
    const auto& events = queue_.waiting();
    while (!expected_.empty() && (events.empty() || expected_.front().second < events.front().serial))
        expected_.pop_front();
}

} // namespace tarvik
