// The system's own log.
#pragma once

#include "support/log.h"

namespace tarvik {

/// Any thread.
class SystemLog final : public LogSink {
public:
    void write(std::string_view message) override;
};

} // namespace tarvik
