#include "platform/linux/x11/x11_pointer_filter.h"

#include "platform/linux/x11/x11_trigger.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <utility>

namespace tarvik {

X11PointerFilter::X11PointerFilter(const X11Connection& x, int opcode, const Screens& screens, LogSink& log,
                                   Hooks hooks)
    : x_(x)
    , display_(x.display())
    , log_(log)
    , hooks_(std::move(hooks))
    , queue_(display_, opcode, [this](const XEvent& event) { otherEvent(event); })
    , devices_(display_)
    , grab_(display_, x.root())
    , probe_(display_, x.root())
    , clicks_(display_, x.root(), queue_, devices_, grab_, probe_, log)
    , reversal_(display_, x.root(), devices_)
    , wheel_(display_, devices_, reversal_)
    , wheelPass_(display_, queue_, devices_, probe_, wheel_)
    , dragStart_(display_, queue_, devices_, grab_, log)
    , events_(screens) {
    selectDeviceEvents(display_, x.root(), DeviceEvents::changes);
}

X11PointerFilter::~X11PointerFilter() {
    grab_.release(); // a hold keeps its grab until the last button is up
    XSync(display_, False);
    queue_.pull();
    // A press that has come to us belongs to the hold, even if it has not been read yet.
    while (hold_ && !queue_.empty())
        process(queue_.pop());
    if (grab_.held()) { // a click was given back
        grab_.release();
        XSync(display_, False);
        queue_.pull();
    }
    if (hold_) {
        releaseButtons();
        lose("the tap ends");
    } else {
        for (const auto& event : queue_.waiting()) {
            if (event.type == XiEventType::press)
                allow(event, wheelPass_.isOwn(event) ? XIAsyncDevice : XIReplayDevice);
        }
    }
    XSync(display_, False);
}

bool X11PointerFilter::arm(TriggerButton trigger) {
    const int button = triggerOf(trigger).xButton;
    if (grab_.held() && grab_.button() == button && !renew_)
        return true;
    if (grab_.held())
        grab_.release();
    renew_ = false;
    trigger_ = trigger;
    return grab_.grab(button);
}

void X11PointerFilter::process() {
    queue_.pull();
    while (!queue_.empty()) {
        hooks_.beforeEvent();
        process(queue_.pop());
        if (queue_.empty() && !hold_ && clicks_.deferred())
            clicks_.settle();
    }
    missRelease();
    // What has arrived meanwhile was earlier.
    if (wakeAt_ && !releaseDue() && std::chrono::steady_clock::now() >= wakeAtHere_) {
        queue_.pull();
        if (queue_.empty())
            timeCame();
    }
    if (!hold_)
        reversal_.settle();
    if (idle())
        clicks_.unwatch();
    XFlush(display_);
}

std::optional<std::chrono::milliseconds> X11PointerFilter::timeLeft() const {
    using namespace std::chrono;
    if (!releaseDue() && !wakeAt_)
        return std::nullopt;
    const auto next = releaseDue().value_or(wakeAtHere_);
    return std::max(milliseconds(0), ceil<milliseconds>(next - steady_clock::now()));
}

void X11PointerFilter::process(const XiEvent& event) {
    switch (event.type) {
    case XiEventType::press:
        press(event);
        break;
    case XiEventType::motion:
        if (hold_)
            motion(event);
        break;
    case XiEventType::release:
        if (hold_)
            release(event);
        break;
    case XiEventType::rawPress:
        clicks_.follow(event);
        rawPress(event);
        break;
    case XiEventType::rawRelease:
        clicks_.follow(event);
        rawRelease(event);
        break;
    case XiEventType::wheelTurned:
        reversal_.wheelTurned(event);
        break;
    case XiEventType::wheelReleased:
        reversal_.wheelReleased();
        break;
    case XiEventType::devicesChanged:
        devicesChanged();
        break;
    case XiEventType::propertyChanged:
        reversal_.propertyChanged(event);
        break;
    }
}

void X11PointerFilter::press(const XiEvent& event) {
    const auto own = wheelPass_.claim(event);
    const bool inHold = hold_ && event.master == hold_->master;
    // Nothing is frozen for it any more, and an answer would be taken for that to a press that has come since.
    if (own == X11WheelPass::Press::answered || (!inHold && isWheelButton(event.button)))
        return;
    if (own == X11WheelPass::Press::late) {
        lateOwnPress(event);
    } else if (inHold) {
        allow(event, XIAsyncDevice);
        if (isWheelButton(event.button)) {
            wheel(event);
        } else {
            hold_->others.emplace_back(event.button, event.source);
            tellOfOther(event, true);
        }
    } else if (hold_ || event.button != triggerOf(trigger_).xButton) {
        allow(event, XIReplayDevice); // another pointer's, or that of an earlier trigger
    } else if (clicks_.surfaced(event)) {
        allow(event, XIReplayDevice);
        clicks_.settle();
    } else {
        begin(event);
    }
}

void X11PointerFilter::lateOwnPress(const XiEvent& event) {
    // Where the hand has let go meanwhile, the rest is a hold that nobody is asked about.
    if (!hold_) {
        hold_.emplace(Hold{event.source, event.master, event.button, true, event.location, event.buttonsBefore, {}});
        clicks_.watch();
    }
    allow(event, XIAsyncDevice);
}

void X11PointerFilter::otherEvent(const XEvent& event) {
    if (event.type == MappingNotify && event.xmapping.request == MappingPointer)
        devices_.mappingChanged();
    else
        hooks_.otherEvent(event);
}

void X11PointerFilter::devicesChanged() {
    // A device that goes releases its buttons; a master takes its grabs along.
    devices_.forget();
    if (hold_)
        hold_->devicesChanged = true;
    clicks_.devicesChanged();
    reversal_.devicesChanged();
    renew();
    if (hold_ && !devices_.exists(hold_->master)) {
        lose("its pointer has gone");
        end();
    }
    if (!hold_ && clicks_.waiting())
        clicks_.settle();
}

void X11PointerFilter::allow(const XiEvent& event, int mode) {
    XIAllowEvents(display_, event.master, mode, event.time);
}

} // namespace tarvik
