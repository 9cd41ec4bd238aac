// How often a process has ended against its will, and whether it may be started again.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// The ends of the last minute. Times are those of the steady clock, which all processes of a session share.
class RecentEnds {
public:
    using Time = std::chrono::steady_clock::time_point;
    static constexpr std::size_t mostRestarts = 3;

    struct End {
        Time time;
        /// The state of the thread that was the reason, as /proc names it: T stopped, ... '?' when it is not known.
        char state = '?';
    };

    RecentEnds() = default;
    /// What `text` wrote; parts that make no sense are left out.
    static RecentEnds parse(std::string_view text);
    std::string text() const;

    void add(const End& end);
    const std::vector<End>& ends() const { return ends_; }

    /// Whether it has ended too often to be started again.
    bool tooMany() const { return ends_.size() > mostRestarts; }
    /// How long to wait before it is started again: each time four times as long.
    std::chrono::milliseconds pause() const;

private:
    std::vector<End> ends_;
};

} // namespace tarvik
