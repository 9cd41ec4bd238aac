// The process that the watchdog looks after.
#pragma once

#include "platform/linux/watchdog/patience.h"

#include <optional>
#include <sys/types.h>

namespace tarvik {

class GuardedProcess {
public:
    /// The process must be alive.
    explicit GuardedProcess(pid_t process);
    ~GuardedProcess();
    GuardedProcess(const GuardedProcess&) = delete;
    GuardedProcess& operator=(const GuardedProcess&) = delete;

    /// Nothing when it has ended.
    std::optional<ThreadSample> sample(pid_t thread) const;
    /// Ends it, whatever it is doing, and no other one that has got its number meanwhile. False when it may not.
    bool kill() const;

private:
    const pid_t process_;
    const int handle_;
};

} // namespace tarvik
