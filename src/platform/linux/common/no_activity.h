// What a process is for is of no interest to Linux: none is slowed down for having no window.
#pragma once

#include "ports/activity.h"

namespace tarvik {

class NoActivity final : public Activity {
public:
    void beginLatencyCritical(std::string_view) override {}
};

} // namespace tarvik
