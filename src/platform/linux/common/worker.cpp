#include "platform/linux/common/worker.h"
#include "support/guarded.h"

#include <pthread.h>

#include <utility>

namespace tarvik {

Worker::Worker(std::string name, LogSink& log) : name_(std::move(name)), log_(log), thread_([this] { run(); }) {}

Worker::~Worker() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void Worker::post(Task task) {
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    wake_.notify_one();
}

void Worker::run() {
    pthread_setname_np(pthread_self(), name_.c_str());
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return ending_ || !tasks_.empty(); });
        if (tasks_.empty())
            return;
        // The task is destroyed before the lock is taken again: what it holds may post in turn.
        {
            const auto task = std::move(tasks_.front());
            tasks_.pop_front();
            lock.unlock();
            carryOut(task);
        }
        lock.lock();
    }
}

void Worker::carryOut(const Task& task) { guarded(log_, name_, task); }

} // namespace tarvik
