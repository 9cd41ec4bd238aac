// The main thread's event loop as a queue.
#pragma once

#include "ports/task_queue.h"

#include <QObject>
#include <deque>
#include <mutex>

namespace tarvik {

/// Tasks that are still queued when it is destroyed are dropped. Made on the main thread.
class QtMainQueue final : public MainQueue {
public:
    void post(std::function<void()> task) override;
    void after(std::chrono::milliseconds delay, std::function<void()> task) override;

private:
    /// Runs one task for each event that it gets. The toolkit could carry the task itself, but the thread sanitizer
    /// does not see into the toolkit's queue, and would take every task for a race.
    class Runner : public QObject {
    public:
        void add(std::function<void()> task);

    private:
        void customEvent(QEvent* event) override;

        std::mutex mutex_;
        std::deque<std::function<void()>> tasks_;
    };
    Runner runner_;
};

} // namespace tarvik
