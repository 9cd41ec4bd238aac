#include "platform/macos/tap_port.h"

#include "platform/macos/quartz_event.h"

namespace tarvik {

std::unique_ptr<TapPort> TapPort::create(CGEventTapCallBack callback, void* context) {
    auto port = CfRef<CFMachPortRef>::adopt(CGEventTapCreate(
        kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault, tappedEvents(), callback, context));
    if (!port)
        return nullptr;
    auto source = CfRef<CFRunLoopSourceRef>::adopt(CFMachPortCreateRunLoopSource(kCFAllocatorDefault, port.get(), 0));
    if (!source) {
        CFMachPortInvalidate(port.get());
        return nullptr;
    }
    return std::unique_ptr<TapPort>(new TapPort(std::move(port), std::move(source)));
}

TapPort::TapPort(CfRef<CFMachPortRef> port, CfRef<CFRunLoopSourceRef> source)
    : port_(std::move(port)), source_(std::move(source)) {
    CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    enable(true);
}

/// First no more events come to the port, then nobody listens to it, then it is given back to the system: with a tap
/// that is switched on and not listened to, the input of the whole session would wait for its time-out.
TapPort::~TapPort() {
    enable(false);
    CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    CFMachPortInvalidate(port_.get());
}

} // namespace tarvik
