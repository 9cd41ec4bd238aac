// What the engine costs on the path of an event.
//
//   engine_bench EVENT COUNT
//
// EVENT is other, moved or wheel, which pass, or drag10, drag1000, drag100000, movements in a hold that already has
// so many points. Prints the nanoseconds of one. Everything that is counted happens in `measured`, so that a profiler
// can tell its instructions from the rest.
#include "engine/gesture_engine.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>
#include <utility>

namespace tarvik {
namespace {

/// The thread's own time: others that use the processor meanwhile do not count.
std::chrono::nanoseconds now() {
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

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
    void update(const PathView&, const std::string&) override {}
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
    return e;
}

/// Events of one kind, each a point further than the one before. What passes comes back, and goes in again.
[[gnu::noinline]] void measured(GestureEngine& engine, PointerEvent next, int count) {
    for (int i = 0; i < count; ++i) {
        next.location.x += 1; // NOLINT(bugprone-use-after-move): where an event was kept, what is left of it will do
        if (auto decision = engine.handle(std::move(next)))
            next = *std::move(decision);
    }
}

/// In pieces, so that a hold grows by no more than one of them.
std::chrono::nanoseconds timeOf(PointerEventType type, int points, int count) {
    constexpr int piece = 1000;
    std::chrono::nanoseconds time{};
    Engine e;
    for (int done = 0; done < count; done += piece) {
        auto moved = event(type);
        if (points > 0)
            e.engine.handle(event(PointerEventType::rightDown));
        for (int i = 1; i < points; ++i) {
            moved.location.x += 1;
            e.engine.handle(moved);
        }
        const auto start = now();
        measured(e.engine, moved, std::min(piece, count - done));
        time += now() - start;
    }
    return time;
}

} // namespace
} // namespace tarvik

int main(int argc, char** argv) {
    using tarvik::PointerEventType;
    const std::map<std::string, std::pair<PointerEventType, int>> events = {
        {"other", {PointerEventType::otherDown, 0}},          {"moved", {PointerEventType::rightDragged, 0}},
        {"wheel", {PointerEventType::scrollWheel, 0}},        {"drag10", {PointerEventType::rightDragged, 10}},
        {"drag1000", {PointerEventType::rightDragged, 1000}}, {"drag100000", {PointerEventType::rightDragged, 100'000}},
    };
    const auto known = argc == 3 ? events.find(argv[1]) : events.end();
    const int count = argc == 3 ? std::atoi(argv[2]) : 0;
    if (known == events.end() || count <= 0) {
        std::fprintf(stderr, "usage: engine_bench other|moved|wheel|drag10|drag1000|drag100000 COUNT\n");
        return EXIT_FAILURE;
    }
    const auto [type, points] = known->second;
    const std::chrono::duration<double, std::nano> time = tarvik::timeOf(type, points, count);
    std::printf("%.2f\n", time.count() / count);
}
