// One thread that carries tasks out in order.
#pragma once

#include "support/log.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace tarvik {

/// The thread sleeps while there is nothing to do. A task that throws is logged; the next one follows.
class Worker {
public:
    using Task = std::function<void()>;

    /// `name` (at most 15 characters) is what system tools show for the thread. `log` must outlive the worker.
    Worker(std::string name, LogSink& log);
    /// Carries out what was posted, then ends the thread.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// From any thread, also from a task. Tasks run in the order of the calls.
    void post(Task task);

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
