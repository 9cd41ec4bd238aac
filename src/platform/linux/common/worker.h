// One thread that carries tasks out in order.
#pragma once

#include "ports/task_queue.h"
#include "support/log.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace tarvik {

/// The thread sleeps while there is nothing to do. A task that throws is logged; the next one follows.
class Worker final : public TaskQueue {
public:
    using Task = std::function<void()>;

    /// `name` (at most 15 characters) is what system tools show for the thread. `log` must outlive the worker.
    Worker(std::string name, LogSink& log);
    /// Carries out what was posted, then ends the thread.
    ~Worker() override;
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Also from a task.
    void post(Task task) override;

private:
    void run();
    void carryOut(const Task& task);

    const std::string name_;
    LogSink& log_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Task> tasks_;
    bool ending_ = false;
    std::thread thread_;
};

} // namespace tarvik
