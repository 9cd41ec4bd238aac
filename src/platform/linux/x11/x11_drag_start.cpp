#include "platform/linux/x11/x11_drag_start.h"

#include <algorithm>

namespace tarvik {
namespace {

/// A button of a device was faked up by one request and down by another: whether the hand released it before our press,
/// by the raw events that have been read.
bool handLetGo(const XiQueue& queue, const X11ButtonMap& buttons, int source, int button, unsigned long releaseRequest,
               unsigned long pressRequest) {
    // Of two events with the serial number of our request the first is ours.
    bool ownReleaseSeen = false;
    bool down = true;
    for (const auto& event : queue.waiting()) {
        if (event.source != source || buttons.logical(event.button) != button)
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

} // namespace

void X11DragStart::begin(const ReturnedClick& press) {
    // The hand's release comes from the device of the hold, so the press must too. One that cannot put the pointer to a
    // place presses where the pointer is, which is not far.
    const bool canPlace = devices_.prepare(press.source) == press.source;
    const int place[2] = {press.x, press.y};
    const int trigger = grab_.button();
    grab_.release();
    const auto releaseRequest = NextRequest(display_);
    devices_.fakeButton(press.source, press.button, false);
    const auto pressRequest = NextRequest(display_);
    devices_.fakeButton(press.source, press.button, true, canPlace ? place : nullptr);
    grab_.grab(trigger); // waits for the answer: all of this has happened now

    queue_.pull();
    const auto& events = queue_.waiting();
    const bool pressed = std::any_of(events.begin(), events.end(), [&](const XiEvent& event) {
        return event.type == XiEventType::rawPress && event.source == press.source && event.serial == pressRequest &&
               devices_.buttons().logical(event.button) == press.button;
    });
    if (!pressed)
        log_.write("a press could not be handed on: its mouse has gone");
    else if (handLetGo(queue_, devices_.buttons(), press.source, press.button, releaseRequest, pressRequest))
        devices_.fakeButton(press.source, press.button, false);
}

} // namespace tarvik
