#include "support/log.h"

#include "support/printable.h"

#include <cstdio>
#include <ctime>
#include <fstream>
#include <system_error>
#include <utility>

namespace tarvik {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t stampLength = sizeof "2025-01-31 14:03:07.412 " - 1;

} // namespace

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

Log::Log(fs::path file, Clock clock)
    : file_(std::move(file))
    , oldFile_(fs::path(file_).replace_extension(".old.log"))
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
    const auto line = printable(message, longestLogMessage);
    {
        // The stamp is taken under the lock, so that the order of the stamps is the order of the lines.
        const std::lock_guard lock(mutex_);
        if (queue_.size() < mostWaiting)
            queue_.push_back(logTimeStamp(clock_()).append(" ").append(line).append("\n"));
        else
            ++missing_;
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
        const auto missing = missing_;
        writing_ = true;
        lock.unlock();
        const bool written = writeOut(line, missing);
        lock.lock();
        missing_ = written ? missing_ - missing : missing_ + 1;
        writing_ = false;
        if (queue_.empty())
            idle_.notify_all();
    }
}

bool Log::writeOut(const std::string& line, std::size_t missing) const {
    if (append(missing == 0
                   ? line
                   : line.substr(0, stampLength) + std::to_string(missing) + " lines are missing here\n" + line))
        return true;
    if (missing == 0)
        std::fprintf(stderr, "Tarvik: %s cannot be written; its lines come here instead\n", file_.c_str());
    std::fputs(line.c_str(), stderr);
    return false;
}

bool Log::append(const std::string& text) const {
    makeRoom();
    std::error_code error;
    const auto type = fs::status(file_, error).type();
    if (type == fs::file_type::fifo)
        return false; // opening a pipe that nobody reads would not return
    const bool fresh = type == fs::file_type::not_found;
    if (fresh && fs::create_directories(file_.parent_path(), error))
        fs::permissions(file_.parent_path(), fs::perms::owner_all, error);
    std::ofstream out(file_, std::ios::binary | std::ios::app);
    if (fresh)
        fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write, error);
    const auto size = fs::file_size(file_, error);
    if (!out)
        return false;
    out << text;
    out.close();
    if (!out && !error)
        fs::resize_file(file_, size, error); // no half lines
    return out.good();
}

/// Where the old file cannot be replaced, its lines are lost: nobody's disk is filled.
void Log::makeRoom() const {
    std::error_code error;
    const auto size = fs::file_size(file_, error);
    if (error || size <= rotationSize)
        return;
    fs::remove(oldFile_, error);
    fs::rename(file_, oldFile_, error);
    if (error)
        fs::resize_file(file_, 0, error);
}

} // namespace tarvik
