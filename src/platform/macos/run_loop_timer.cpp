#include "platform/macos/run_loop_timer.h"

#include <utility>

namespace tarvik {

RunLoopTimer::RunLoopTimer(CFTimeInterval interval, CFTimeInterval tolerance, std::function<void()> tick)
    : tick_(std::move(tick)) {
    add(interval, interval);
    CFRunLoopTimerSetTolerance(timer_.get(), tolerance);
}

RunLoopTimer::RunLoopTimer(CFTimeInterval delay, std::function<void()> tick) : tick_(std::move(tick)) { add(delay, 0); }

void RunLoopTimer::add(CFTimeInterval delay, CFTimeInterval interval) {
    CFRunLoopTimerContext context = {0, this, nullptr, nullptr, nullptr};
    const auto fire = [](CFRunLoopTimerRef, void* self) {
        const auto tick = static_cast<RunLoopTimer*>(self)->tick_; // outlives the timer
        tick();
    };
    timer_ = CfRef<CFRunLoopTimerRef>::adopt(
        CFRunLoopTimerCreate(kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + delay, interval, 0, 0, fire, &context));
    CFRunLoopAddTimer(CFRunLoopGetMain(), timer_.get(), kCFRunLoopCommonModes);
}

/// The run loop has a reference of its own, which only this takes away.
RunLoopTimer::~RunLoopTimer() { CFRunLoopTimerInvalidate(timer_.get()); }

} // namespace tarvik
