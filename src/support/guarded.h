// Running what others gave us where nothing may be thrown.
#pragma once

#include "support/log.h"

#include <exception>
#include <string>
#include <string_view>

namespace tarvik {

/// Runs the task; when it throws, the log gets a line that begins with `who`, and the caller goes on.
template <typename F> void guarded(LogSink& log, std::string_view who, const F& task) {
    try {
        task();
    } catch (const std::exception& error) {
        log.write(std::string(who) + ": a task failed: " + error.what());
    } catch (...) {
        log.write(std::string(who) + ": a task failed");
    }
}

} // namespace tarvik
