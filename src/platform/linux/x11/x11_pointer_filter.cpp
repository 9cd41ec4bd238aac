#include "platform/linux/x11/x11_pointer_filter.h"

#include "platform/linux/x11/x11_trigger.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvik {
namespace {

/// What a swallowed event needs to be given back.
struct NativeEvent {
    int source;
    int master;
    int xButton;
};

double unitsPerPointAt(Point location, const std::vector<Screen>& screens) {
    for (const auto& screen : screens) {
        if (screen.frame.contains(location))
            return screen.unitsPerPoint;
    }
    return screens.empty() ? 1 : screens.front().unitsPerPoint;
}

} // namespace

X11PointerFilter::X11PointerFilter(const X11Connection& x, int opcode, const Screens& screens, LogSink& log,
                                   Hooks hooks)
    : x_(x)
    , display_(x.display())
    , screens_(screens)
    , log_(log)
    , hooks_(std::move(hooks))
    , queue_(display_, opcode, [this](const XEvent& event) { otherEvent(event); })
    , devices_(display_)
    , grab_(display_, x.root())
    , probe_(display_, x.root())
    , clicks_(display_, x.root(), queue_, devices_, grab_, probe_, log)
    , reversal_(display_, x.root(), devices_)
    , wheel_(display_, devices_, reversal_)
    , wheelPass_(display_, queue_, devices_, probe_, wheel_) {
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
        // The releases come to us; those of the hand change nothing any more.
        for (const auto& [button, source] : hold_->others)
            devices_.fakeButton(source, button, false);
        if (!hold_->decided) {
            devices_.fakeButton(hold_->source, hold_->button, false);
            lose("the tap ends");
        }
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
    if (!hold_)
        reversal_.settle();
    if (idle())
        clicks_.unwatch();
    XFlush(display_);
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
        if (hold_ && !wheelPass_.isOwn(event))
            release(event);
        break;
    case XiEventType::rawPress:
        clicks_.follow(event);
        break;
    case XiEventType::rawRelease:
        clicks_.follow(event);
        rawRelease(event);
        break;
    case XiEventType::wheelTurned:
        reversal_.wheelTurned(event);
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
    if (wheelPass_.isOwn(event)) {
        // Where the hand has let go meanwhile, the rest is a hold that nobody is asked about.
        if (!hold_) {
            hold_.emplace(Hold{event.source, event.master, event.button, true, event.location, {}});
            clicks_.watch();
        }
        allow(event, XIAsyncDevice);
    } else if (hold_ && event.master == hold_->master) {
        allow(event, XIAsyncDevice);
        if (isWheelButton(event.button))
            wheel(event);
        else
            hold_->others.emplace_back(event.button, event.source);
    } else if (hold_ || event.button != triggerOf(trigger_).xButton) {
        allow(event, XIReplayDevice); // another pointer's, or that of an earlier trigger
    } else if (clicks_.surfaced(event)) {
        allow(event, XIReplayDevice);
        clicks_.settle();
    } else {
        begin(event);
    }
}

void X11PointerFilter::begin(const XiEvent& event) {
    if (decide(pointerEvent(event, triggerOf(trigger_).down))) {
        allow(event, XIReplayDevice);
        return;
    }
    hold_.emplace(Hold{event.source, event.master, event.button, false, event.location, {}});
    clicks_.watch();
    allow(event, XIAsyncDevice);
    wheel_.begin();
}

void X11PointerFilter::motion(const XiEvent& event) {
    wheel(event);
    // A turn that passed may have ended the hold.
    if (!hold_ || hold_->decided || event.location == hold_->location)
        return;
    hold_->location = event.location;
    decide(pointerEvent(event, triggerOf(trigger_).drag));
}

void X11PointerFilter::wheel(const XiEvent& event) {
    for (const auto& turn : wheel_.turns(event)) {
        // What is undone after the hold's end in the server would reach the application.
        if (!hold_->others.empty() || !releaseWaiting())
            wheel_.takeBack(turn);
        if (hold_->decided)
            continue;
        auto scroll = pointerEvent(event, PointerEventType::scrollWheel);
        scroll.vertical = turn.vertical;
        scroll.horizontal = turn.horizontal;
        scroll.directionInverted = turn.directionInverted;
        // With other buttons down there is no way to the application, and the turn is dropped.
        if (!decide(std::move(scroll)) || !hold_->others.empty() || releaseWaiting())
            continue;
        if (!wheelPass_.pass(turn, hold_->source, hold_->master, hold_->button)) {
            lose("another program has the pointer");
            end();
            return;
        }
    }
}

void X11PointerFilter::rawRelease(const XiEvent& event) {
    if (!hold_) {
        if (clicks_.waiting())
            clicks_.settle();
        return;
    }
    const bool letGo = event.source == hold_->source && devices_.buttons().logical(event.button) == hold_->button &&
                       !hold_->decided && !wheelPass_.isOwn(event);
    if (!letGo || releaseComes())
        return;
    XSync(display_, False);
    if (releaseComes())
        return;
    lose("another program has taken its mouse");
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

void X11PointerFilter::lose(const char* reason) {
    if (hold_->decided)
        return;
    hold_->decided = true;
    log_.write(std::string("hold lost: ") + reason);
    PointerEvent notice;
    notice.type = PointerEventType::holdLost;
    notice.time = now_;
    decide(std::move(notice));
}

void X11PointerFilter::release(const XiEvent& event) {
    if (event.button == hold_->button && !hold_->decided) {
        // The server itself releases the buttons of a device that it loses.
        if (devices_.serves(event.source, event.master)) {
            hold_->decided = true;
            decide(pointerEvent(event, triggerOf(trigger_).up));
        } else {
            lose("its mouse has gone");
        }
    } else {
        const auto other = std::find_if(hold_->others.begin(), hold_->others.end(),
                                        [&](const auto& pressed) { return pressed.first == event.button; });
        if (other != hold_->others.end()) {
            otherClicks_.push_back({other->first, other->second, hold_->master, static_cast<int>(event.location.x),
                                    static_cast<int>(event.location.y)});
            hold_->others.erase(other);
        }
    }
    auto stillDown = event.buttonsBefore;
    stillDown.reset(static_cast<std::size_t>(event.button));
    for (const int wheelButton : {4, 5, 6, 7})
        stillDown.reset(static_cast<std::size_t>(wheelButton));
    // The server keeps the grab until the last button is up, and what we gave back before that would come to us.
    if (stillDown.none())
        end();
}

void X11PointerFilter::end() {
    wheel_.announce(hold_->source);
    hold_.reset();
    reversal_.holdEnded();
    for (const auto& posted : std::exchange(posted_, {})) {
        // A click is posted as press and release; the device makes both.
        if (posted.type != triggerOf(trigger_).down || !posted.native)
            continue;
        const auto& native = *std::static_pointer_cast<const NativeEvent>(posted.native);
        clicks_.add({native.xButton, native.source, native.master, static_cast<int>(std::floor(posted.location.x)),
                     static_cast<int>(std::floor(posted.location.y))});
    }
    for (const auto& click : std::exchange(otherClicks_, {}))
        clicks_.add(click);
    clicks_.settle();
    if (tasks_.empty())
        return;
    // An action may want to grab the pointer itself: ours must be gone when it begins.
    XSync(display_, False);
    for (const auto& task : std::exchange(tasks_, {}))
        task();
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

PointerEvent X11PointerFilter::pointerEvent(const XiEvent& event, PointerEventType type) {
    PointerEvent result;
    result.type = type;
    result.button = triggerOf(trigger_).button;
    result.location = event.location;
    if (event.time != CurrentTime)
        now_ = clock_.widen(event.time);
    result.time = now_;
    if (type == triggerOf(trigger_).down) {
        result.unitsPerPoint = unitsPerPointAt(event.location, screens_.screens());
        result.native = std::make_shared<const NativeEvent>(NativeEvent{event.source, event.master, event.button});
    }
    return result;
}

std::optional<PointerEvent> X11PointerFilter::decide(PointerEvent event) { return hooks_.handler(std::move(event)); }

} // namespace tarvik
