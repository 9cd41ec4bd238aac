// What a process has used so far, by the kernel's own counts.
#pragma once

#include <cstdint>

namespace tarvik {

struct TaskCost {
    std::int64_t cpu = 0;    // nanoseconds on a processor, all threads
    std::int64_t bytes = 0;  // written by its first thread: to the X server, by a client that does not log there
    std::int64_t writes = 0; // in so many calls

    friend TaskCost operator-(const TaskCost& a, const TaskCost& b) {
        return {a.cpu - b.cpu, a.bytes - b.bytes, a.writes - b.writes};
    }
};

/// Of threads that live.
TaskCost costOf(int pid);

} // namespace tarvik
