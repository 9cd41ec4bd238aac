#include "platform/linux/common/recent_ends.h"
#include "platform/linux/watchdog/patience.h"

#include <gmock/gmock.h>

#include <string>

namespace tarvik {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using testing::Eq;

/// After how many steps of this kind the tap counts as hung; nothing when it does not in a minute.
std::optional<int> stepsUntilHung(milliseconds took, char state, milliseconds usedInAStep) {
    Patience patience(ThreadSample{state, 0ms});
    milliseconds used{};
    for (int step = 1; step <= 600; ++step) {
        used += usedInAStep;
        if (patience.exhaustedAfter(took, {state, used}))
            return step;
    }
    return std::nullopt;
}

TEST(Patience, countsWhenTheTapCouldHaveAnswered) {
    const std::optional<int> never;
    struct Case {
        const char* what;
        milliseconds took;
        char state;
        milliseconds used;
        std::optional<int> steps;
    };
    const Case cases[] = {
        {"stopped", 100ms, 'T', 0ms, 7},
        {"held by a debugger", 100ms, 't', 0ms, 7},
        {"waits for a lock", 280ms, 'S', 0ms, 7},
        {"stuck in the system", 100ms, 'D', 0ms, 7},
        {"a loop without end", 100ms, 'R', 100ms, 7},
        {"a loop without end on a busy machine", 100ms, 'R', 4ms, 35},
        {"wants to run and may not", 100ms, 'R', 0ms, never},
        {"the watchdog too has no turn", 400ms, 'S', 0ms, never},
        {"the machine was asleep", 1h, 'D', 0ms, never},
        {"stopped on a busy machine", 400ms, 'T', 0ms, 7},
    };
    for (const auto& c : cases)
        EXPECT_THAT(stepsUntilHung(c.took, c.state, c.used), Eq(c.steps)) << c.what;
}

TEST(Patience, badStepsInBetweenDelayAndDoNotForget) {
    Patience patience(ThreadSample{'S', 0ms});
    for (int i = 0; i < 6; ++i)
        EXPECT_FALSE(patience.exhaustedAfter(100ms, {'S', 0ms}));
    EXPECT_FALSE(patience.exhaustedAfter(3s, {'S', 0ms}));
    EXPECT_FALSE(patience.exhaustedAfter(100ms, {'R', 10ms}));
    EXPECT_TRUE(patience.exhaustedAfter(100ms, {'S', 10ms}));
}

RecentEnds::Time at(milliseconds time) { return RecentEnds::Time(time); }

TEST(RecentEnds, threeRestartsInAMinuteAndNoMore) {
    RecentEnds ends;
    for (const auto pause : {250ms, 1000ms, 4000ms}) {
        ends = RecentEnds::parse(ends.text()); // from process to process
        ends.add({at(1h + 15s * ends.ends().size()), 'T'});
        EXPECT_FALSE(ends.tooMany());
        EXPECT_EQ(ends.pause(), pause);
    }
    auto soon = ends;
    soon.add({at(1h + 59s), 'D'});
    EXPECT_TRUE(soon.tooMany());
    EXPECT_EQ(soon.text(), "T3600000,T3615000,T3630000,D3659000");
    ends.add({at(1h + 60s), 'D'});
    EXPECT_FALSE(ends.tooMany()) << "the first one is a minute old";
}

TEST(RecentEnds, leavesOutWhatMakesNoSense) {
    for (const auto* text : {"", ",", "T", "1", "T-5", "Tx", "T99999999999999999999", "T9999999999999999"})
        EXPECT_TRUE(RecentEnds::parse(text).ends().empty()) << text;
    EXPECT_EQ(RecentEnds::parse(",T7,,x,D8,").text(), "T7,D8");
}

} // namespace
} // namespace tarvik
