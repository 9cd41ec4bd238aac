// Windows of other applications, through the accessibility service.
#pragma once

#include "platform/macos/session_applications.h"
#include "ports/windows.h"

namespace tarvik {

/// Main thread. Without the permission every read fails, and there are no windows.
class AxWindows final : public Windows {
public:
    explicit AxWindows(const SessionApplications& applications) : applications_(applications) {}

    std::unique_ptr<Window> targetWindow(std::optional<Point> point) override;

private:
    const SessionApplications& applications_;
};

} // namespace tarvik
