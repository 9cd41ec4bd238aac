// What the engine costs on the path of an event.
#include "engine/gesture_engine.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace tarvik {
namespace {

/// Ports that do nothing, so that only the engine is measured.
struct NullTap final : EventTap {
    bool start(Handler) override { return true; }
    void stop() override {}
    bool installed() const override { return true; }
    void setTriggerButton(TriggerButton) override {}
    void enable() override {}
    void post(const PointerEvent&) override {}
    void afterEvent(std::function<void()>) override {}
    void run(std::function<void()>) override {}
};
struct NullTrail final : Trail {
    void update(const PathView& points, const std::string& label) override {
        benchmark::DoNotOptimize(points.count);
        benchmark::DoNotOptimize(label.data());
    }
    void hide() override {}
};
struct NullActions final : Actions {
    void perform(const GestureAction&, std::optional<Point>) override {}
};
struct NoFrontmost final : Frontmost {
    std::optional<std::string> frontmostApplication() const override { return std::nullopt; }
};
struct NullLog final : LogSink {
    void write(std::string_view) override {}
};

struct Engine {
    NullTap tap;
    NullTrail trail;
    NullActions actions;
    NoFrontmost frontmost;
    NullLog log;
    GestureEngine engine{tap, trail, actions, frontmost, log};

    Engine() {
        auto preferences = std::make_shared<Preferences>();
        preferences->mappings["RD"] = {{ActionKind::enterFullScreen, {}}, "Enter Full Screen"};
        engine.setPreferences(preferences);
    }
};

PointerEvent event(PointerEventType type) {
    PointerEvent e;
    e.type = type;
    e.native = std::make_shared<int>(0);
    return e;
}

/// The other button, an idle drag, an idle wheel.
void pass(benchmark::State& state) {
    Engine e;
    auto passing = event(static_cast<PointerEventType>(state.range(0)));
    for (auto _ : state) {
        auto result = e.engine.handle(std::move(passing));
        passing = *std::move(result);
    }
}
BENCHMARK(pass)->Arg(25)->Arg(7)->Arg(22);

/// One movement of a hold that already has so many points, strokes and label included.
void drag(benchmark::State& state) {
    Engine e;
    const auto length = static_cast<int>(state.range(0));
    auto moved = event(PointerEventType::rightDragged);
    const auto hold = [&] {
        e.engine.handle(event(PointerEventType::rightDown));
        for (int i = 0; i < length; ++i) {
            moved.location = {static_cast<double>(i), 0};
            e.engine.handle(moved);
        }
    };
    hold();
    int moves = 0;
    for (auto _ : state) {
        if (++moves == length + 1000) {
            state.PauseTiming();
            hold();
            moves = 0;
            state.ResumeTiming();
        }
        moved.location.x += 1;
        e.engine.handle(moved);
    }
}
BENCHMARK(drag)->Arg(10)->Arg(1000)->Arg(100'000);

void recognizerAdd(benchmark::State& state) {
    StrokeRecognizer recognizer{30, {0, 0}, {}};
    recognizer.directions.reserve(8);
    double x = 0;
    for (auto _ : state) {
        x += 7;
        recognizer.add({x, 3});
        benchmark::DoNotOptimize(recognizer.anchor);
    }
}
BENCHMARK(recognizerAdd);

} // namespace
} // namespace tarvik
