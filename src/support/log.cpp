#include "support/log.h"

#include "support/printable.h"

#include <cstdio>
#include <ctime>
#include <fstream>
#include <system_error>
#include <utility>

namespace tarvik {

std::string logTimeStamp(std::chrono::system_clock::time_point time) {
    using namespace std::chrono;
    const auto second = floor<seconds>(time);
    const auto millis = duration_cast<milliseconds>(time - second).count();
    const std::time_t t = system_clock::to_time_t(second);
    std::tm local{};
    localtime_r(&t, &local);
    char text[40];
    const auto length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    std::snprintf(text + length, sizeof text - length, ".%03d", static_cast<int>(millis));
    return text;
}

Log::Log(std::filesystem::path file, Clock clock)
    : file_(std::move(file))
    , oldFile_(std::filesystem::path(file_).replace_extension(".old.log"))
    , clock_(std::move(clock))
    , writer_([this] { run(); }) {}

Log::~Log() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    writer_.join();
}

void Log::write(std::string_view message) {
    std::string line;
    {
        // The stamp is taken under the lock, so that the order of the stamps is the order of the lines.
        const std::lock_guard lock(mutex_);
        line = logTimeStamp(clock_());
        line.append(" ").append(printable(message, longestLogMessage)).append("\n");
        queue_.push_back(std::move(line));
    }
    wake_.notify_one();
}

void Log::flush() {
    std::unique_lock lock(mutex_);
    idle_.wait(lock, [this] { return queue_.empty() && !writing_; });
}

void Log::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return ending_ || !queue_.empty(); });
        if (queue_.empty())
            return;
        const std::string line = std::move(queue_.front());
        queue_.pop_front();
        writing_ = true;
        lock.unlock();
        append(line);
        lock.lock();
        writing_ = false;
        if (queue_.empty())
            idle_.notify_all();
    }
}

void Log::append(const std::string& line) const {
    std::error_code ignored;
    const auto size = std::filesystem::file_size(file_, ignored);
    if (!ignored && size > rotationSize) {
        std::filesystem::remove(oldFile_, ignored);
        std::filesystem::rename(file_, oldFile_, ignored);
    }
    std::ofstream out(file_, std::ios::binary | std::ios::app);
    out << line;
}

} // namespace tarvik
