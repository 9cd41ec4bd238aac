// The whole of Tarvik on a simulated Mac, driven by the lines of a gesture script: input comes from the simulated
// device, and what is expected is looked for where it would show, with the applications, in the log and at the trail.
#pragma once

#include "actions/queued_actions.h"
#include "engine/gesture_engine.h"
#include "fakes/fake_engine_ports.h"
#include "fakes/recording_log.h"
#include "macos/sim/world.h"
#include "macos/support/mac_actions.h"
#include "platform/macos/dispatch_main_queue.h"
#include "platform/macos/quartz_event_tap.h"

#include <string>
#include <vector>

namespace tarvik {

/// One script. Every failure is collected as "line N: what is wrong".
class ScriptMac {
public:
    ScriptMac();
    std::vector<std::string> run(const std::string& script);

    /// Whether the script needs what no Mac has: screens whose units are not points, a hold lost to another program,
    /// the left button among the others.
    static bool knows(const std::string& script);

private:
    using Words = std::vector<std::string>;

    /// Notes what is performed before it is.
    struct NotedActions final : Actions {
        NotedActions(TaskQueue& q, ActionPerformer& p) : inner(q, p) {}
        void perform(const GestureAction& action, std::optional<Point> point) override {
            noted.perform(action, point);
            inner.perform(action, point);
        }
        FakeActions noted;
        QueuedActions inner;
    };

    void execute(const Words& words);
    void input(const Words& words);
    sim::EventData button(const Words& words);
    sim::EventData wheel(const Words& words) const;
    void expect(const Words& words);
    void expectPassed(const Words& words);
    void expectPosted(const Words& words);
    void expectPerform(const Words& words);
    void expectTrail(const Words& words);
    void expectNothingLeft();
    void publish();
    void fail(const std::string& message);

    RecordingLog log_;
    DispatchMainQueue mainQueue_;
    InlineQueue actionQueue_;
    MacActions mac_{log_};
    NotedActions actions_{actionQueue_, mac_.performer};
    FakeTrail trail_;
    FakeFrontmost frontmost_;
    QuartzEventTap tap_;
    GestureEngine engine_;

    Preferences preferences_;
    std::string button_ = "right";
    Point pointer_;
    std::vector<std::string> recorded_;
    std::optional<sim::EventData> sent_;
    int line_ = 0;
    std::vector<std::string> failures_;
};

} // namespace tarvik
