// Event taps, and the road of an event from the device through them to the applications.
#include "macos/sim/events.h"
#include "macos/sim/run_loop.h"

#include <dispatch/dispatch.h>

#include <algorithm>
#include <deque>
#include <memory>

namespace tarvik::sim {
namespace {

struct Port : Object {
    Port(TapRecord r, void* i) : Object(portType), made(r), info(i) {}
    ~Port() override;
    const TapRecord made;
    void* const info;
    /// A tap is not to be relied on before it was switched on.
    bool enabled = false;
    bool valid = true;
    /// Its source is on the main run loop.
    bool heard = false;
};

struct LoopSource : Object {
    explicit LoopSource(Port& p) : Object(loopSourceType), port(p) { CFRetain(&port); }
    ~LoopSource() override { CFRelease(&port); }
    Port& port;
};

struct OnItsWay {
    CGEventTapLocation from;
    EventData event;
};

std::vector<Port*> ports; // the first is asked first
std::deque<OnItsWay> onTheirWay;
bool moving = false;

Port::~Port() {
    if (valid)
        fatal("a tap's port was let go without giving it up");
    std::erase(ports, this);
}

CGEventRef ask(Port& port, CGEventType type, CGEventRef event) {
    return port.made.callback(nullptr, type, event, port.info);
}

/// Whether the event comes out on the other side of the taps.
bool passesTaps(CGEventTapLocation from, Event& event) {
    const auto asked = ports;
    for (auto* port : asked) {
        const auto type = event.data.type;
        if (port->made.place < from || !port->valid || !port->enabled || !(port->made.mask & CGEventMaskBit(type)))
            continue;
        if (!world().trusted || !port->heard) {
            ++world().stuck;
            return false;
        }
        const auto answer = ask(*port, type, reference<CGEventRef>(&event));
        if (!answer)
            return false;
        if (answer != reference<CGEventRef>(&event))
            fatal("the tap answered with another event");
    }
    return true;
}

/// One event at a time: what is posted meanwhile comes after it.
void move() {
    if (std::exchange(moving, true))
        return;
    while (!onTheirWay.empty()) {
        const auto next = std::move(onTheirWay.front());
        onTheirWay.pop_front();
        // Of its own, so that a reference that is kept for too long is found.
        const auto event = create<Event, CGEventRef>(next.event);
        if (passesTaps(next.from, object<Event>(event)))
            world().delivered.push_back(object<Event>(event).data);
        CFRelease(event);
    }
    moving = false;
}

void detach(Port& port, const void* source) {
    if (!std::exchange(port.heard, false))
        return;
    if (port.enabled && port.valid)
        fatal("a tap that is switched on lost its listener");
    CFRelease(source);
}

/// The notice comes later, through the run loop.
void noticeOfOwnSwitch(Port& port) {
    CFRetain(&port);
    dispatch_async_f(dispatch_get_main_queue(), &port, [](void* context) {
        auto& told = object<Port>(context);
        if (told.valid && told.heard)
            ask(told, kCGEventTapDisabledByUserInput, nullptr);
        CFRelease(context);
    });
}

} // namespace

void hardware(EventData event) {
    if (world().postsAreLate)
        onTheirWay.push_front({kCGHIDEventTap, std::move(event)});
    else
        onTheirWay.push_back({kCGHIDEventTap, std::move(event)});
    move();
}

void disableTaps(CGEventType notice) {
    const auto told = ports;
    for (auto* port : told) {
        port->enabled = false;
        ask(*port, notice, nullptr);
    }
}

void disableTapsSilently() {
    for (auto* port : ports)
        port->enabled = false;
}

void killPorts() {
    for (auto* port : ports)
        port->enabled = port->valid = false;
}

} // namespace tarvik::sim

using namespace tarvik::sim;

extern "C" {

CFMachPortRef CGEventTapCreate(CGEventTapLocation place, CGEventTapPlacement placement, CGEventTapOptions options,
                               CGEventMask mask, CGEventTapCallBack callback, void* info) {
    if (world().refuseTaps || (!world().trusted && options == kCGEventTapOptionDefault))
        return nullptr;
    const TapRecord made = {place, placement, options, mask, callback};
    world().taps.push_back(made);
    auto* port = new Port(made, info);
    ports.insert(placement == kCGHeadInsertEventTap ? ports.begin() : ports.end(), port);
    return reference<CFMachPortRef>(port);
}
void CGEventTapEnable(CFMachPortRef tap, bool enable) {
    auto& port = object<Port>(tap);
    if (!port.valid)
        return;
    if (std::exchange(port.enabled, enable) && !enable)
        noticeOfOwnSwitch(port);
}
bool CGEventTapIsEnabled(CFMachPortRef tap) { return object<Port>(tap).enabled; }

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef, CFMachPortRef port, CFIndex order) {
    if (order != 0)
        fatal("the tap's source has an order");
    return create<LoopSource, CFRunLoopSourceRef>(object<Port>(port));
}
Boolean CFMachPortIsValid(CFMachPortRef port) { return object<Port>(port).valid; }
void CFMachPortInvalidate(CFMachPortRef port) {
    auto& ended = object<Port>(port);
    if (ended.enabled && ended.valid)
        fatal("a tap that is switched on was given up");
    ended.valid = false;
    std::erase(ports, &ended);
}

void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    if (!isMainLoop(loop, mode))
        fatal("the tap's source is not on the main run loop in the common modes");
    CFRetain(source);
    object<LoopSource>(source).port.heard = true;
}
void CFRunLoopRemoveSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    if (isMainLoop(loop, mode))
        detach(object<LoopSource>(source).port, source);
}

void CGEventPost(CGEventTapLocation place, CGEventRef event) {
    const auto& data = object<Event>(event).data;
    world().posted.push_back({place, data});
    if (!world().trusted)
        return;
    onTheirWay.push_back({place, data});
    if (!world().postsAreLate)
        move();
}
bool CGEventSourceButtonState(CGEventSourceStateID state, CGMouseButton button) {
    if (state != kCGEventSourceStateCombinedSessionState || button != kCGMouseButtonLeft)
        fatal("another button was asked for");
    return world().leftDown;
}

Boolean AXIsProcessTrusted(void) { return world().trusted; }
const CFStringRef kAXTrustedCheckOptionPrompt = CFSTR("AXTrustedCheckOptionPrompt");
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    if (!world().trusted && CFDictionaryGetValue(options, CFSTR("AXTrustedCheckOptionPrompt")) == kCFBooleanTrue)
        ++world().prompts;
    return world().trusted;
}

} // extern "C"
