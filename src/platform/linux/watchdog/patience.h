// When a tap that does not answer counts as hung, and not as the victim of a busy machine.
#pragma once

#include <chrono>
#include <optional>

namespace tarvik {

/// What the system says about a thread.
struct ThreadSample {
    /// As /proc names it: R runs or waits for a processor, S and D wait for something else, T and t are stopped.
    char state = '?';
    /// Processor time that it has had.
    std::chrono::milliseconds used{};
};

/// Counts the time in which the thread could have answered. Time is cut into steps. One counts
/// - when the thread is stopped: time would not help it,
/// - when it wants to run, only if it was given processor time, in this step and those before that did not count.
///   Else the machine is busy with others; and so a loop without end is found out on any machine,
/// - when it waits for something, only if the watchdog itself had its turn, and an answer of the server, soon enough:
///   else everybody waits, or the machine was asleep.
class Patience {
public:
    static constexpr std::chrono::milliseconds step{100};
    /// With the delays of the watchdog itself, and a round trip to the server.
    static constexpr auto longestStep = 3 * step;
    /// A press is to be noticed within a second, and a click of the user given up on no sooner.
    static constexpr int steps = 7;

    explicit Patience(const ThreadSample& atTheQuestion) : used_(atTheQuestion.used) {}

    /// After each step, which took this long. True when there has been enough time.
    bool exhaustedAfter(std::chrono::milliseconds took, const ThreadSample& thread);

private:
    int counted_ = 0;
    std::chrono::milliseconds used_;
};

} // namespace tarvik
