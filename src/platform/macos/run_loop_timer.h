// A timer on the main run loop.
#pragma once

#include "platform/macos/cf_ref.h"

#include <functional>

namespace tarvik {

/// Fires in every mode of the main run loop, menus and modal windows included, until it is destroyed; a tick may do
/// that. Main thread.
class RunLoopTimer {
public:
    /// `tolerance` is how late it may fire, so that the system can wake up once for several timers; seconds.
    RunLoopTimer(CFTimeInterval interval, CFTimeInterval tolerance, std::function<void()> tick);
    /// Fires once, and on time.
    RunLoopTimer(CFTimeInterval delay, std::function<void()> tick);
    ~RunLoopTimer();
    RunLoopTimer(const RunLoopTimer&) = delete;
    RunLoopTimer& operator=(const RunLoopTimer&) = delete;

private:
    void add(CFTimeInterval delay, CFTimeInterval interval);

    const std::function<void()> tick_;
    CfRef<CFRunLoopTimerRef> timer_;
};

} // namespace tarvik
