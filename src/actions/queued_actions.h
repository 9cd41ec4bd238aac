// Carries actions out on the thread that is there for them, in order.
#pragma once

#include "actions/action_performer.h"
#include "ports/actions.h"
#include "ports/task_queue.h"

namespace tarvik {

class QueuedActions final : public Actions {
public:
    QueuedActions(TaskQueue& queue, ActionPerformer& performer) : queue_(queue), performer_(performer) {}

    void perform(const GestureAction& action, std::optional<Point> point) override {
        queue_.post([this, action, point] { performer_.perform(action, point); });
    }

private:
    TaskQueue& queue_;
    ActionPerformer& performer_;
};

} // namespace tarvik
