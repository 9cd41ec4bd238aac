#include "platform/macos/run_loop_timer.h"

#include <utility>

namespace tarvik {

RunLoopTimer::RunLoopTimer(CFTimeInterval interval, CFTimeInterval tolerance, std::function<void()> tick)
    : tick_(std::move(tick)) {
    CFRunLoopTimerContext context = {0, this, nullptr, nullptr, nullptr};
    const auto fire = [](CFRunLoopTimerRef, void* self) { static_cast<RunLoopTimer*>(self)->tick_(); };
    timer_ = CfRef<CFRunLoopTimerRef>::adopt(CFRunLoopTimerCreate(
        kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + interval, interval, 0, 0, fire, &context));
    CFRunLoopTimerSetTolerance(timer_.get(), tolerance);
    CFRunLoopAddTimer(CFRunLoopGetMain(), timer_.get(), kCFRunLoopCommonModes);
}

/// The run loop has a reference of its own, which only this takes away.
RunLoopTimer::~RunLoopTimer() { CFRunLoopTimerInvalidate(timer_.get()); }

} // namespace tarvik
