// The main thread's queue.
#pragma once

#include "ports/task_queue.h"

namespace tarvik {

class DispatchMainQueue final : public MainQueue {
public:
    void post(std::function<void()> task) override;
    void after(std::chrono::milliseconds delay, std::function<void()> task) override;
};

/// Runs each task at once, on the thread that posts it. Actions on macOS: the tap hands gestures over once its callback
/// has returned, and wheel steps, which only post keys, from inside it.
class InlineQueue final : public TaskQueue {
public:
    void post(std::function<void()> task) override { task(); }
};

} // namespace tarvik
