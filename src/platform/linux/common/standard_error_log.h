// The system log of a program that a session runs: what it writes to standard error, the journal keeps.
#pragma once

#include "support/log.h"
#include "support/printable.h"

#include <cstdio>
#include <string>

namespace tarvik {

class StandardErrorLog final : public LogSink {
public:
    void write(std::string_view message) override {
        std::fputs((printable(message, longestLogMessage) + '\n').c_str(), stderr);
    }
};

} // namespace tarvik
