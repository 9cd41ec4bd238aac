// A timer of the main thread that goes off again and again while it exists.
#pragma once

#include "ports/task_queue.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace tarvik {

class RepeatingTimer {
public:
    /// The first tick comes after one interval. A tick may destroy its timer.
    RepeatingTimer(MainQueue& queue, std::chrono::milliseconds interval, std::function<void()> tick)
        : state_(std::make_shared<State>(State{queue, interval, std::move(tick)})) {
        schedule(state_);
    }

private:
    struct State {
        MainQueue& queue;
        std::chrono::milliseconds interval;
        std::function<void()> tick;
    };

    /// What lies in the queue when the timer goes away finds it gone.
    static void schedule(const std::weak_ptr<State>& weak) {
        const auto state = weak.lock();
        if (!state)
            return;
        state->queue.after(state->interval, [weak] {
            if (const auto ticking = weak.lock())
                ticking->tick();
            schedule(weak);
        });
    }

    std::shared_ptr<State> state_;
};

} // namespace tarvik
