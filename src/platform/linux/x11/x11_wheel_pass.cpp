#include "platform/linux/x11/x11_wheel_pass.h"

#include "platform/linux/x11/x11_drag_start.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <chrono>

namespace tarvik {
namespace {

/// How long a window manager may look at a turn of the wheel. The pointer waits for it, with us or without us.
constexpr std::chrono::milliseconds longestWait(1000);
/// The same at a turn that came in between: clicks that follow wait for us meanwhile.
constexpr std::chrono::milliseconds longestLook(100);

} // namespace

bool X11WheelPass::pass(const WheelTurn& turn, int source, int master, int button) {
    forgetExpected();
    devices_.prepare(source);
    devices_.prepare(turn.source);
    const auto releaseRequest = NextRequest(display_);
    expected_.emplace_back(XiEventType::release, releaseRequest);
    devices_.fakeButton(source, button, false);
    wheel_.repeat(turn);
    // While the window manager looks at the turn, a press would follow the turn to the application.
    if (!probe_.waitUntilFree(master, longestWait))
        return false;
    const auto pressRequest = NextRequest(display_);
    expected_.emplace_back(XiEventType::press, pressRequest);
    // The hand may have let go meanwhile. Then both in one go: a process that is killed between two requests would
    // leave the button down.
    queue_.pull();
    const auto letGo = [&] {
        return handLetGo(queue_, devices_.buttons(), source, button, releaseRequest, pressRequest);
    };
    const bool alreadyUp = letGo();
    devices_.fakeButton(source, button, true);
    if (alreadyUp)
        devices_.fakeButton(source, button, false);
    auto press = pressOf(pressRequest);
    // Another turn may have been quicker, and the window manager looks at that one first. A press that has been dealt
    // with went to a client that had the pointer, and will not come.
    if (!press && !probe_.isDown(master, button) && probe_.waitUntilFree(master, longestLook))
        press = pressOf(pressRequest);
    const bool resumed = press.has_value();
    // At once: the next turn may be waiting before it, and would find the pointer frozen.
    if (resumed)
        XIAllowEvents(display_, master, XIAsyncDevice, press->time);
    // Nobody else would ever release the button.
    if (!alreadyUp && (!resumed || letGo()))
        devices_.fakeButton(source, button, false);
    return resumed;
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
