// What only the application framework knows of the running applications, for the adapters that speak C.
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

namespace tarvik {

/// Main thread.
class SessionApplications {
public:
    virtual ~SessionApplications() = default;
    /// The process of the active application.
    virtual std::optional<pid_t> frontmostProcess() const = 0;
    virtual std::optional<std::string> localizedName(pid_t process) const = 0;
};

} // namespace tarvik
