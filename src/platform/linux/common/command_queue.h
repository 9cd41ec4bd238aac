// Commands for a thread that otherwise waits for file descriptors.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

namespace tarvik {

/// One thread runs the commands; any thread may post them.
class CommandQueue {
public:
    CommandQueue();
    ~CommandQueue();
    CommandQueue(const CommandQueue&) = delete;
    CommandQueue& operator=(const CommandQueue&) = delete;

    void post(std::function<void()> command);
    /// Runs everything that was posted, in order. Costs one atomic read when there is nothing.
    void drain();
    /// Readable while commands wait; for `poll`.
    int descriptor() const { return descriptor_; }

private:
    const int descriptor_;
    std::atomic<bool> waiting_ = false;
    std::mutex mutex_;
    std::vector<std::function<void()>> commands_;
};

} // namespace tarvik
