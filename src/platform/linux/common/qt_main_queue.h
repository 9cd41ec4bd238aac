// The main thread's event loop as a queue.
#pragma once

#include "ports/task_queue.h"

#include <QObject>

namespace tarvik {

/// Tasks that are still queued when it is destroyed are dropped. Made on the main thread.
class QtMainQueue final : public MainQueue {
public:
    void post(std::function<void()> task) override;
    void after(std::chrono::milliseconds delay, std::function<void()> task) override;

private:
    QObject context_;
};

} // namespace tarvik
