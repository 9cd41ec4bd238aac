// The main run loop: timers, the dispatch queue of the main thread, distributed notifications.
#include "macos/sim/run_loop.h"

#include "macos/sim/world.h"

#include <Carbon/Carbon.h>
#include <dispatch/dispatch.h>

#include <algorithm>
#include <deque>
#include <limits>
#include <mutex>

namespace tarvik::sim {
namespace {

struct Timer : Object {
    Timer(double first, double every, CFRunLoopTimerCallBack call, void* i)
        : Object(timerType), due(first), interval(every), callback(call), info(i) {}
    double due;
    const double interval;
    const CFRunLoopTimerCallBack callback;
    void* const info;
};

struct Task {
    double due;
    void* context;
    dispatch_function_t work;
};

struct Observer {
    const void* observer;
    CFNotificationCallback callback;
    std::string name;
};

std::vector<Timer*> timers;
std::mutex tasksMutex;
std::deque<Task> tasks;
std::vector<Observer> observing;
int mainLoop;
int mainQueue;
int distributedCenter;

/// The task that is due first, if it is due by then.
std::optional<Task> takeTask(double by) {
    const std::lock_guard lock(tasksMutex);
    const auto first =
        std::min_element(tasks.begin(), tasks.end(), [](const Task& a, const Task& b) { return a.due < b.due; });
    if (first == tasks.end() || first->due > by)
        return std::nullopt;
    const auto task = *first;
    tasks.erase(first);
    return task;
}

Timer* firstTimer() {
    const auto first =
        std::min_element(timers.begin(), timers.end(), [](const Timer* a, const Timer* b) { return a->due < b->due; });
    return first == timers.end() ? nullptr : *first;
}

void addTask(Task task) {
    const std::lock_guard lock(tasksMutex);
    tasks.push_back(task);
}

} // namespace

bool isMainLoop(CFRunLoopRef loop, CFRunLoopMode mode) {
    return loop == CFRunLoopGetMain() && CFEqual(mode, kCFRunLoopCommonModes);
}

void runMainQueue() {
    while (const auto task = takeTask(world().now))
        task->work(task->context);
}

void advance(double seconds) {
    const double end = world().now + seconds;
    runMainQueue();
    while (true) {
        auto* timer = firstTimer();
        const double timerDue = timer ? timer->due : std::numeric_limits<double>::infinity();
        if (const auto task = takeTask(std::min(end, timerDue))) {
            world().now = std::max(world().now, task->due);
            task->work(task->context);
        } else if (timerDue <= end) {
            world().now = timerDue;
            timer->due += timer->interval;
            const auto fired = reference<CFRunLoopTimerRef>(timer);
            CFRetain(fired);
            timer->callback(fired, timer->info);
            if (timer->interval == 0)
                CFRunLoopTimerInvalidate(fired);
            CFRelease(fired);
        } else {
            break;
        }
    }
    world().now = end;
}

void notify(CFStringRef name) {
    const auto told = observing;
    for (const auto& [observer, callback, wanted] : told) {
        if (wanted == textOf(name))
            callback(CFNotificationCenterGetDistributedCenter(), const_cast<void*>(observer), name, nullptr, nullptr);
    }
}

std::size_t observers() { return observing.size(); }

} // namespace tarvik::sim

using namespace tarvik::sim;

extern "C" {

const CFRunLoopMode kCFRunLoopCommonModes = CFSTR("kCFRunLoopCommonModes");
const CFRunLoopMode kCFRunLoopDefaultMode = CFSTR("kCFRunLoopDefaultMode");
CFRunLoopRef CFRunLoopGetMain(void) { return reinterpret_cast<CFRunLoopRef>(&mainLoop); }

CFAbsoluteTime CFAbsoluteTimeGetCurrent(void) { return world().now; }
CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime fireDate, CFTimeInterval interval, CFOptionFlags,
                                       CFIndex, CFRunLoopTimerCallBack callback, CFRunLoopTimerContext* context) {
    return create<Timer, CFRunLoopTimerRef>(fireDate, interval, callback, context->info);
}
void CFRunLoopTimerSetTolerance(CFRunLoopTimerRef timer, CFTimeInterval tolerance) {
    if (tolerance * 2 > object<Timer>(timer).interval)
        fatal("a timer that is hardly one any more");
}
void CFRunLoopAddTimer(CFRunLoopRef loop, CFRunLoopTimerRef timer, CFRunLoopMode mode) {
    if (!isMainLoop(loop, mode))
        fatal("a timer that stops while a menu is open");
    CFRetain(timer);
    timers.push_back(&object<Timer>(timer));
}
void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
    if (std::erase(timers, &object<Timer>(timer)) > 0)
        CFRelease(timer);
}

dispatch_queue_t dispatch_get_main_queue(void) { return reinterpret_cast<dispatch_queue_t>(&mainQueue); }
/// In nanoseconds of the simulated clock.
dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t nanoseconds) {
    if (when != DISPATCH_TIME_NOW)
        fatal("only times from now are simulated");
    return static_cast<dispatch_time_t>(world().now * 1e9) + static_cast<dispatch_time_t>(nanoseconds);
}
void dispatch_async_f(dispatch_queue_t, void* context, dispatch_function_t work) {
    addTask({world().now, context, work});
}
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t, void* context, dispatch_function_t work) {
    addTask({static_cast<double>(when) / 1e9, context, work});
}

CFNotificationCenterRef CFNotificationCenterGetDistributedCenter(void) {
    return reinterpret_cast<CFNotificationCenterRef>(&distributedCenter);
}
void CFNotificationCenterAddObserver(CFNotificationCenterRef, const void* observer, CFNotificationCallback callback,
                                     CFStringRef name, const void*, CFNotificationSuspensionBehavior) {
    observing.push_back({observer, callback, textOf(name)});
}
void CFNotificationCenterRemoveObserver(CFNotificationCenterRef, const void* observer, CFNotificationName name,
                                        const void*) {
    std::erase_if(observing, [&](const Observer& o) { return o.observer == observer && o.name == textOf(name); });
}

} // extern "C"
