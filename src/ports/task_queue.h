// Threads to hand work to.
#pragma once

#include <chrono>
#include <functional>

namespace tarvik {

/// Runs tasks one after the other, in the order in which they were posted.
class TaskQueue {
public:
    virtual ~TaskQueue() = default;
    /// Any thread; returns at once.
    virtual void post(std::function<void()> task) = 0;
};

/// The main thread's event loop.
class MainQueue : public TaskQueue {
public:
    /// Runs the task once, after the delay. Main thread.
    virtual void after(std::chrono::milliseconds delay, std::function<void()> task) = 0;
};

} // namespace tarvik
