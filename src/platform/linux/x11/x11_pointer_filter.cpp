#include "platform/linux/x11/x11_pointer_filter.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>

namespace tarvik {
namespace {

/// How long a window manager may look at a turn of the wheel, and how often to ask whether it is done.
constexpr auto longestWait = std::chrono::milliseconds(100);
constexpr auto retryInterval = std::chrono::microseconds(200);

constexpr int xRight = 3;
constexpr int xMiddle = 2;

struct Trigger {
    int xButton;
    std::int64_t button;
    PointerEventType down, drag, up;
};

constexpr Trigger triggerOf(TriggerButton button) {
    using enum PointerEventType;
    return button == TriggerButton::right ? Trigger{xRight, 1, rightDown, rightDragged, rightUp}
                                          : Trigger{xMiddle, 2, otherDown, otherDragged, otherUp};
}

/// What a swallowed event needs to be given back.
struct NativeEvent {
    int source;
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

X11PointerFilter::X11PointerFilter(const X11Connection& x, int opcode, const Screens& screens, Hooks hooks)
    : x_(x)
    , display_(x.display())
    , screens_(screens)
    , hooks_(std::move(hooks))
    , queue_(display_, opcode, [this](const XEvent& event) { otherEvent(event); })
    , devices_(display_)
    , grab_(display_, x.root())
    , clicks_(display_, x.root(), queue_, devices_, grab_)
    , wheel_(display_, devices_) {
    selectDeviceEvents(display_, x.root(), DeviceEvents::changes);
}

X11PointerFilter::~X11PointerFilter() {
    // While the grab is ours the release comes to us; the hand's own release later changes nothing any more.
    if (hold_)
        devices_.fakeButton(hold_->source, hold_->button, false);
    grab_.release();
    XSync(display_, False);
}

bool X11PointerFilter::arm(TriggerButton trigger) {
    const int button = triggerOf(trigger).xButton;
    if (grab_.held() && grab_.button() == button)
        return true;
    if (grab_.held())
        grab_.release();
    trigger_ = trigger;
    return grab_.grab(button);
}

void X11PointerFilter::process() {
    queue_.pull();
    while (!queue_.empty()) {
        hooks_.beforeEvent();
        process(queue_.pop());
    }
    XFlush(display_);
}

void X11PointerFilter::process(const XiEvent& event) {
    switch (event.type) {
    case XiEventType::press:
        press(event);
        break;
    case XiEventType::motion:
        if (hold_ && !hold_->decided)
            motion(event);
        break;
    case XiEventType::release:
        if (hold_ && !isOwn(event))
            release(event);
        break;
    case XiEventType::rawPress:
    case XiEventType::rawRelease:
        clicks_.follow(event);
        if (event.type == XiEventType::rawRelease && !hold_ && clicks_.waiting())
            clicks_.settle();
        break;
    case XiEventType::devicesChanged:
        devicesChanged();
        break;
    }
}

void X11PointerFilter::press(const XiEvent& event) {
    if (isOwn(event)) {
        allow(event, XIAsyncDevice);
    } else if (hold_ && event.master == hold_->master) {
        allow(event, XIAsyncDevice);
        if (isWheelButton(event.button))
            wheel(event);
        else
            hold_->others.emplace_back(event.button, event.source);
    } else if (hold_ || event.button != triggerOf(trigger_).xButton || clicks_.surfaced(event)) {
        // Another pointer's, or our own.
        allow(event, XIReplayDevice);
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
    if (event.location == hold_->location)
        return;
    hold_->location = event.location;
    decide(pointerEvent(event, triggerOf(trigger_).drag));
}

void X11PointerFilter::wheel(const XiEvent& event) {
    for (const auto& turn : wheel_.turns(event)) {
        wheel_.takeBack(turn);
        auto scroll = pointerEvent(event, PointerEventType::scrollWheel);
        scroll.vertical = turn.vertical;
        scroll.horizontal = turn.horizontal;
        scroll.directionInverted = turn.directionInverted;
        if (decide(std::move(scroll)))
            passWheel(turn);
    }
}

void X11PointerFilter::passWheel(const WheelTurn& turn) {
    // The grab lives as long as a button is down, and an application that gets a wheel's button while another one is
    // down keeps the pointer until that one is up. So the trigger goes up for the moment of the turn, as far as the
    // server knows, and its new press brings the grab back. With other buttons down the turn is dropped.
    if (!hold_->others.empty())
        return;
    const int source = hold_->source;
    const int button = hold_->button;
    devices_.prepare(source);
    const auto releaseRequest = NextRequest(display_);
    expected_.emplace_back(XiEventType::release, releaseRequest);
    devices_.fakeButton(source, button, false);
    wheel_.repeat(turn);
    waitForPointer();
    const auto pressRequest = NextRequest(display_);
    expected_.emplace_back(XiEventType::press, pressRequest);
    devices_.fakeButton(source, button, true);
    XSync(display_, False);
    queue_.pull();

    // If the hand let go before our press, nobody else will ever release the button.
    const auto& events = queue_.waiting();
    const auto ownPress = std::find_if(events.begin(), events.end(), [&](const XiEvent& event) {
        return event.type == XiEventType::rawPress && event.source == source && event.serial == pressRequest;
    });
    const bool letGo = std::any_of(events.begin(), ownPress, [&](const XiEvent& event) {
        return event.type == XiEventType::rawRelease && event.source == source &&
               devices_.buttons().logical(event.button) == button && event.serial != releaseRequest;
    });
    if (letGo)
        devices_.fakeButton(source, button, false);
}

void X11PointerFilter::waitForPointer() {
    // A window manager may hold the pointer frozen while it looks at the turn; a press now would follow the turn to the
    // application. Once we could grab the pointer, nobody else has it.
    unsigned char bits[1] = {};
    XIEventMask mask{hold_->master, sizeof bits, bits};
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    while (XIGrabDevice(display_, hold_->master, x_.root(), CurrentTime, None, XIGrabModeAsync, XIGrabModeAsync, False,
                        &mask) != Success) {
        if (std::chrono::steady_clock::now() > deadline)
            return;
        std::this_thread::sleep_for(retryInterval);
    }
    XIUngrabDevice(display_, hold_->master, CurrentTime);
}

bool X11PointerFilter::isOwn(const XiEvent& event) {
    // The server deals with what a request fakes before it reads the next one, so the serial number tells.
    const auto own = std::find(expected_.begin(), expected_.end(), std::pair(event.type, event.serial));
    if (own == expected_.end())
        return false;
    expected_.erase(expected_.begin(), own + 1);
    return true;
}

void X11PointerFilter::release(const XiEvent& event) {
    if (event.button == hold_->button && !hold_->decided) {
        hold_->decided = true;
        decide(pointerEvent(event, triggerOf(trigger_).up));
    } else {
        const auto other = std::find_if(hold_->others.begin(), hold_->others.end(),
                                        [&](const auto& pressed) { return pressed.first == event.button; });
        if (other != hold_->others.end()) {
            otherClicks_.push_back(
                {other->first, other->second, static_cast<int>(event.location.x), static_cast<int>(event.location.y)});
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
    for (const auto& posted : std::exchange(posted_, {})) {
        // A click is posted as press and release; the device makes both.
        if (posted.type != triggerOf(trigger_).down)
            continue;
        const auto& native = *std::static_pointer_cast<const NativeEvent>(posted.native);
        clicks_.add({native.xButton, native.source, static_cast<int>(std::floor(posted.location.x)),
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
    devices_.forget();
    if (grab_.held() && !hold_) {
        grab_.release();
        grab_.grab(triggerOf(trigger_).xButton);
    }
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
        result.native = std::make_shared<const NativeEvent>(NativeEvent{event.source, event.button});
    }
    return result;
}

std::optional<PointerEvent> X11PointerFilter::decide(PointerEvent event) { return hooks_.handler(std::move(event)); }

} // namespace tarvik
