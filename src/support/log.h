// The diagnostic log: one time-stamped line per event worth noting, written off the caller's thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace tarvik {

/// Bytes. What others wrote is cut, and stays one line without control characters: nobody but us writes a line.
inline constexpr std::size_t longestLogMessage = 2000;

/// Where components write their log lines. Callable from any thread; never fails, never blocks on a disk.
class LogSink {
public:
    virtual ~LogSink() = default;
    virtual void write(std::string_view message) = 0;
    /// Waits until what was written before the call has reached its place.
    virtual void flush() {}
};

/// Appends lines to a file on a thread of its own, in the order of the calls. Each line is the local time at the call
/// ("2025-01-31 14:03:07.412"), a blank, the message and a line feed. Before a line is appended to a file of more than
/// `rotationSize` bytes, that file becomes "<name>.old.log" beside it. The file is not held open between lines; it and
/// its folder are made when they are missing, for the user alone.
///
/// A log must never disturb what it reports on. A line that cannot be written goes to standard error, whole, and is not
/// tried again; the first that can be written after it has a line before it that says how many are missing.
class Log final : public LogSink {
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;
    static constexpr std::uintmax_t rotationSize = 1'000'000;
    /// Lines that wait while the disk does not answer; more are missing, too.
    static constexpr std::size_t mostWaiting = 10'000;

    explicit Log(std::filesystem::path file, Clock clock = std::chrono::system_clock::now);
    /// Writes what is queued, then ends the writer.
    ~Log() override;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    void write(std::string_view message) override;
    /// Waits until every line queued before the call is in the file (or was given up).
    void flush() override;

private:
    void run();
    bool writeOut(const std::string& line, std::size_t missing) const;
    bool append(const std::string& text) const;
    void makeRoom() const;

    const std::filesystem::path file_;
    const std::filesystem::path oldFile_;
    const Clock clock_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::deque<std::string> queue_;
    /// Since the last line that is in the file.
    std::size_t missing_ = 0;
    bool writing_ = false;
    bool ending_ = false;
    std::thread writer_;
};

/// The time stamp of a log line, in local time.
std::string logTimeStamp(std::chrono::system_clock::time_point time);

} // namespace tarvik
