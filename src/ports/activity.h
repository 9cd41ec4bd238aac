// Telling the system what the process is for, so that it does not put it to sleep.
#pragma once

#include <string_view>

namespace tarvik {

class Activity {
public:
    virtual ~Activity() = default;
    /// Begins a latency-critical activity on behalf of the user, which allows the machine to sleep when idle. It lasts
    /// as long as the process. Main thread.
    virtual void beginLatencyCritical(std::string_view reason) = 0;
};

} // namespace tarvik
