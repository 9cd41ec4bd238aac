// The engine in a world made of fakes, driven by the lines of a gesture script. docs/gesture-scripts.md describes the
// language.
#pragma once

#include "engine/gesture_engine.h"
#include "fakes/fake_engine_ports.h"
#include "fakes/fake_event_tap.h"
#include "fakes/recording_log.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

/// One script. Every failure is collected as "line N: what is wrong".
class ScriptWorld {
public:
    ScriptWorld();
    std::vector<std::string> run(const std::string& script);

private:
    using Words = std::vector<std::string>;

    void execute(const Words& words);
    void bind(const Words& words);
    void wait(std::chrono::nanoseconds duration);
    void input(const Words& words);
    void pointerInput(const std::string& verb, const Words& words);
    void wheelInput(const Words& words);
    void send(PointerEvent event);
    void expect(const Words& words);
    void expectTrail(const Words& words);
    void expectWheel(const Words& words);
    void expectPerform(const Words& words);
    void expectPosted(const Words& words);
    void expectNothingLeft();
    void publish();
    void fail(const std::string& message);

    FakeEventTap tap_;
    FakeTrail trail_;
    FakeActions actions_;
    FakeFrontmost frontmost_;
    RecordingLog log_;
    GestureEngine engine_;

    Preferences preferences_;
    std::chrono::nanoseconds now_{};
    double unitsPerPoint_ = 1;
    Point pointer_;
    std::string button_ = "right";
    std::vector<std::string> recorded_;
    int switchedOff_ = 0;
    std::optional<PointerEvent> sent_;
    std::optional<PointerEvent> result_;
    int line_ = 0;
    std::vector<std::string> failures_;
};

} // namespace tarvik
