// What one update of the trail costs, from a short path to a very long one. Run by bench/trail-bench.
#include "platform/linux/x11/x11_trail_panels.h"

#include <QGuiApplication>

#include <xcb/shape.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <random>

namespace tarvik {
namespace {

constexpr int measured = 100;  // updates for one line of the table
constexpr double step = 7;     // pixels between two reports of a quick mouse
constexpr double inset = 20;   // pixels that the path keeps from the edges
constexpr double turning = .3; // radians, the standard deviation from one report to the next

struct NoLog : LogSink {
    void write(std::string_view) override {}
};

struct Cost {
    double ours = 0;   // microseconds of our thread's CPU time
    double server = 0; // microseconds until the server has carried it out
    double bytes = 0;
};

double microseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// A pointer that wanders all over the screen.
class Wanderer {
public:
    explicit Wanderer(Size screen) : screen_(screen), at_{screen.width / 2, screen.height / 2} {}
    Point next() {
        heading_ += turn_(random_);
        at_ = {at_.x + step * std::cos(heading_), at_.y + step * std::sin(heading_)};
        const Rect inside = Rect{0, 0, screen_.width, screen_.height}.enlarged(-inset);
        if (!inside.contains(at_)) {
            at_ = {std::clamp(at_.x, inside.x, inside.maxX() - 1), std::clamp(at_.y, inside.y, inside.maxY() - 1)};
            heading_ = std::atan2(screen_.height / 2 - at_.y, screen_.width / 2 - at_.x);
        }
        return {std::round(at_.x), std::round(at_.y)};
    }

private:
    const Size screen_;
    Point at_;
    double heading_ = 0;
    std::mt19937 random_{1};
    std::normal_distribution<double> turn_{0, turning};
};

class Bench {
public:
    Bench(X11MainConnection& connection, X11TrailPanels& panels, Size screen)
        : connection_(connection), panel_(panels.make({{0, 0, screen.width, screen.height}, 1})), wanderer_(screen) {
        update();
        panel_->show();
        finish();
    }

    Cost at(std::size_t points) {
        while (path_->size() + 1 < points)
            path_->append(wanderer_.next());
        update();
        finish();
        std::vector<double> ours;
        std::vector<double> server;
        std::vector<double> bytes;
        for (int i = 0; i < measured; ++i) {
            const auto written = xcb_total_written(connection_.get());
            const double wall = microseconds(CLOCK_MONOTONIC);
            const double cpu = microseconds(CLOCK_THREAD_CPUTIME_ID);
            update();
            ours.push_back(microseconds(CLOCK_THREAD_CPUTIME_ID) - cpu);
            bytes.push_back(static_cast<double>(xcb_total_written(connection_.get()) - written));
            finish();
            server.push_back(microseconds(CLOCK_MONOTONIC) - wall);
        }
        return {median(ours), median(server), median(bytes)};
    }

private:
    void update() {
        path_->append(wanderer_.next());
        panel_->draw({path_, path_->size()}, "\u2192 \u2193  Next Tab", (*path_)[path_->size() - 1]);
    }
    void finish() {
        auto* const xcb = connection_.get();
        const XcbReply<xcb_get_input_focus_reply_t> done(
            xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
        QCoreApplication::processEvents();
    }

    X11MainConnection& connection_;
    std::unique_ptr<TrailPanel> panel_;
    Wanderer wanderer_;
    std::shared_ptr<Path> path_ = std::make_shared<Path>();
};

void run() {
    NoLog log;
    X11MainConnection connection;
    X11TrailPanels panels(connection, log);
    const Size screen{static_cast<double>(connection.screen().width_in_pixels),
                      static_cast<double>(connection.screen().height_in_pixels)};
    Bench(connection, panels, screen).at(measured); // fonts, caches
    Bench bench(connection, panels, screen);
    std::printf("%8s %14s %26s %8s\n", "points", "our CPU, us", "with the server's work, us", "bytes");
    Cost first;
    Cost last;
    for (const std::size_t points : {10, 100, 1000, 10'000, 50'000}) {
        last = bench.at(points);
        if (points == 10)
            first = last;
        std::printf("%8zu %14.1f %26.1f %8.0f\n", points, last.ours, last.server, last.bytes);
    }
    std::printf("%8s %14.2f %26.2f %8.2f\n", "ratio", last.ours / first.ours, last.server / first.server,
                last.bytes / first.bytes);
}

} // namespace
} // namespace tarvik

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    tarvik::run();
}
