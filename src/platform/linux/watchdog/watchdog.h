// Looks after the tap: notices that it does not answer, and ends its process.
#pragma once

#include "platform/linux/common/lifeline.h"
#include "platform/linux/watchdog/guarded_process.h"
#include "platform/linux/watchdog/patience.h"
#include "platform/linux/watchdog/press_watch.h"
#include "platform/linux/x11/x11_connection.h"

#include <chrono>
#include <optional>
#include <sys/types.h>

namespace tarvik {

/// A tap that does not answer stops the clicks of every application, and only the end of its process makes the server
/// let go. At each press of a button the watchdog asks the tap's own thread for a sign of life, one question at a time;
/// as long as nothing is pressed it sleeps. See Patience for what it makes of silence.
class Watchdog {
public:
    /// `thread`: the tap's, of the process that has made the line.
    Watchdog(const X11Connection& x, Lifeline line, pid_t thread)
        : x_(x), presses_(x), line_(std::move(line)), process_(line_.maker()), thread_(thread) {}

    /// Waits for as long as the tap answers. True when it has ended a tap that did not; false when the tap or the
    /// display has gone by itself.
    bool watch();
    /// After that: the state of the tap's thread, as /proc names it.
    char reason() const { return reason_; }

private:
    using Clock = std::chrono::steady_clock;

    struct Question {
        /// The reason; none for the first one, with which the watchdog begins.
        std::optional<RawPress> press;
        Patience patience;
        Clock::time_point step;
    };

    void waitForNews();
    void ask(const std::optional<RawPress>& press);
    void askAboutPresses();
    /// At the end of a step without a sign. True when there was enough time for one.
    bool silent();
    bool end(const std::optional<RawPress>& press);

    const X11Connection& x_;
    PressWatch presses_;
    Lifeline line_;
    const GuardedProcess process_;
    const pid_t thread_;
    /// Something has come from the server: when to look what it is. Never together with a question.
    std::optional<Clock::time_point> until_;
    std::optional<Question> question_;
    char reason_ = '?';
};

} // namespace tarvik
