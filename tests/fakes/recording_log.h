#pragma once

#include "support/log.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace tarvik {

/// Keeps the lines in memory. Any thread.
class RecordingLog final : public LogSink {
public:
    void write(std::string_view message) override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(message);
    }
    std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }
    bool contains(const std::string& line) const {
        const auto all = lines();
        return std::find(all.begin(), all.end(), line) != all.end();
    }
    void clear() {
        const std::lock_guard lock(mutex_);
        lines_.clear();
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

} // namespace tarvik
