#include "platform/linux/x11/x11_wheel_pass.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace tarvik {
namespace {

/// How long a window manager may look at a turn of the wheel, and how often to ask whether it is done.
constexpr auto longestWait = std::chrono::milliseconds(100);
constexpr auto retryInterval = std::chrono::microseconds(200);

} // namespace

bool X11WheelPass::pass(const WheelTurn& turn, int source, int master, int button) {
    forgetExpected();
    devices_.prepare(source);
    devices_.prepare(turn.source);
    const auto releaseRequest = NextRequest(display_);
    expected_.emplace_back(XiEventType::release, releaseRequest);
    devices_.fakeButton(source, button, false);
    wheel_.repeat(turn);
    waitForPointer(master);
    const auto pressRequest = NextRequest(display_);
    expected_.emplace_back(XiEventType::press, pressRequest);
    devices_.fakeButton(source, button, true);
    XSync(display_, False);
    queue_.pull();

    const auto& events = queue_.waiting();
    const bool resumed = std::any_of(events.begin(), events.end(), [pressRequest](const XiEvent& event) {
        return event.type == XiEventType::press && event.serial == pressRequest;
    });
    // Nobody else would ever release the button.
    if (!resumed || letGo(source, button, releaseRequest, pressRequest))
        devices_.fakeButton(source, button, false);
    return resumed;
}

bool X11WheelPass::letGo(int source, int button, unsigned long releaseRequest, unsigned long pressRequest) const {
    // Of two events with the serial number of our request the first is ours.
    bool ownReleaseSeen = false;
    bool down = true;
    for (const auto& event : queue_.waiting()) {
        if (event.source != source || devices_.buttons().logical(event.button) != button)
            continue;
        if (event.type == XiEventType::rawPress && event.serial == pressRequest)
            break;
        if (event.type == XiEventType::rawRelease && event.serial == releaseRequest && !ownReleaseSeen)
            ownReleaseSeen = true;
        else if (event.type == XiEventType::rawRelease || event.type == XiEventType::rawPress)
            down = event.type == XiEventType::rawPress;
    }
    return !down;
}

void X11WheelPass::waitForPointer(int master) {
    // A window manager may hold the pointer frozen while it looks at the turn; a press now would follow the turn to the
    // application. Once we could grab the pointer, nobody else has it.
    unsigned char bits[1] = {};
    XIEventMask mask{master, sizeof bits, bits};
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    while (XIGrabDevice(display_, master, root_, CurrentTime, None, XIGrabModeAsync, XIGrabModeAsync, False, &mask) !=
           Success) {
        if (std::chrono::steady_clock::now() > deadline)
            return;
        std::this_thread::sleep_for(retryInterval);
    }
    XIUngrabDevice(display_, master, CurrentTime);
}

bool X11WheelPass::isOwn(const XiEvent& event) const {
    // The server deals with what a request fakes before it reads the next one, so the serial number tells.
    return std::find(expected_.begin(), expected_.end(), std::pair(event.type, event.serial)) != expected_.end();
}

void X11WheelPass::forgetExpected() {
    const auto& events = queue_.waiting();
    while (!expected_.empty() && (events.empty() || expected_.front().second < events.front().serial))
        expected_.pop_front();
}

} // namespace tarvik
