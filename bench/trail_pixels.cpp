// From a movement of the mouse to pixels on the screen, and what that costs, for a line that something else draws while
// the right button is held: Tarvik, or bare_trail.
//
// Takes one line a measurement, "RATE POINTS SECONDS [NAME=PID...]", and answers with an object of JSON. RATE is in
// movements a second, POINTS the length of the line before it is measured, SECONDS how long the costs of the named
// processes are taken. The driver's socket takes one client in the life of a server, hence the lines. Run by
// scripts/bench on a desktop with raw input.
#include "driver_mouse.h"
#include "screen_watch.h"
#include "task_cost.h"
#include "wanderer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <thread>
#include <vector>

namespace tarvik {
namespace {

constexpr int button = 3;
constexpr int fastRate = 8000;          // movements a second, to make a line long
constexpr double speed = 3000;          // pixels a second while costs are taken: a quick hand
constexpr std::chrono::seconds late(5); // pixels that take longer count as missing

// What is measured happens in the left part of the screen, in rows from the bottom to the top: the label stands to the
// right of the pointer and below it, where no pixel is waited for any more. The line is made long to the right of that.
constexpr int left = 40;
constexpr int step = 4;
constexpr int inRow = 100;
constexpr int rows = 4;
constexpr int firstRow = 650;
constexpr int rowPitch = 48;
/// From the pointer to a pixel that its round cap covers and the line before does not.
constexpr int ahead = 2;
constexpr int zigzagStep = 6;
constexpr int zigzagHeight = 10;
constexpr int zigzagInRow = 60;
constexpr int zigzagRow = 400;
constexpr int zigzagPitch = 40;
constexpr int scribbleFrom = 520;
constexpr int margin = 40;

/// Knows where the pointer is: nothing else moves it, and it is not accelerated.
class Hand {
public:
    void setRate(int rate) { rate_ = rate; }
    Pixel at() const { return at_; }
    /// From a corner of the screen, which stops the pointer.
    void home() {
        mouse_.moveBy(-30'000, -30'000);
        at_ = {0, 0};
        rest();
    }
    void press(bool down) {
        mouse_.button(button, down);
        rest();
    }
    void moveTo(Pixel to) {
        mouse_.moveBy(to.x - at_.x, to.y - at_.y);
        at_ = to;
    }
    /// Until the next report is due; reports that are late are not made up for in one go.
    void pause() {
        const auto interval = std::chrono::nanoseconds(1'000'000'000 / rate_);
        due_ = std::max(due_ + interval, Clock::now() - interval);
        std::this_thread::sleep_until(due_);
    }
    static void rest() { std::this_thread::sleep_for(std::chrono::milliseconds(50)); }

private:
    int rate_ = fastRate;
    DriverMouse mouse_{"TARVIK_INPUT_MOUSE"};
    Pixel at_;
    Clock::time_point due_ = Clock::now();
};

/// A sheet of paper under everything.
class Paper {
public:
    Paper() : display_(XOpenDisplay(nullptr)) {
        XSetWindowAttributes attributes{};
        attributes.background_pixel = WhitePixel(display_, 0);
        attributes.override_redirect = True;
        const Window window =
            XCreateWindow(display_, DefaultRootWindow(display_), 0, 0, static_cast<unsigned>(DisplayWidth(display_, 0)),
                          static_cast<unsigned>(DisplayHeight(display_, 0)), 0, CopyFromParent, InputOutput, nullptr,
                          CWBackPixel | CWOverrideRedirect, &attributes);
        XMapWindow(display_, window);
        XLowerWindow(display_, window);
        XSync(display_, False);
    }
    ~Paper() { XCloseDisplay(display_); }
    Paper(const Paper&) = delete;
    Paper& operator=(const Paper&) = delete;

private:
    Display* const display_;
};

std::vector<Pixel> measuredPath() {
    std::vector<Pixel> path;
    for (int row = 0; row < rows; ++row) {
        for (int i = 1; i <= inRow; ++i)
            path.push_back({left + step * (row % 2 == 0 ? i : inRow - i), firstRow - row * rowPitch});
    }
    return path;
}

/// Each corner lies off the line that there would be without it.
std::vector<Pixel> zigzag() {
    std::vector<Pixel> path;
    for (int row = 0; row < rows; ++row) {
        for (int i = 1; i <= zigzagInRow; ++i)
            path.push_back({left + zigzagStep * (row % 2 == 0 ? i : zigzagInRow - i),
                            zigzagRow - row * zigzagPitch - i % 2 * zigzagHeight});
    }
    return path;
}

double milliseconds(Clock::duration duration) { return std::chrono::duration<double, std::milli>(duration).count(); }

double quantile(const std::vector<double>& sorted, double part) {
    return sorted.empty() ? NAN : sorted[static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1))];
}

struct Task {
    int rate = 0;
    int points = 0;
    double seconds = 0;
    std::map<std::string, int> processes;
};

class Bench {
public:
    void measure(const Task& task) {
        task_ = task;
        hand_.home();
        hand_.moveTo({left, firstRow});
        hand_.press(true);
        Wanderer wanderer({scribbleFrom, margin, static_cast<double>(watch_.width() - scribbleFrom - margin),
                           static_cast<double>(watch_.height() - 2 * margin)});
        hand_.setRate(fastRate);
        for (int i = 0; i + 2 < task.points; ++i)
            wander(wanderer, Wanderer::usualStep);
        hand_.moveTo({left, firstRow});
        Hand::rest();
        hand_.setRate(task.rate);
        const auto probes = measureLatency();
        const int lost = countLost();
        std::printf("{\"points\": %d, %s, \"lost\": %d, \"costs\": {%s}}\n", task.points, probes.c_str(), lost,
                    costs(wanderer).c_str());
        std::fflush(stdout);
        hand_.press(false);
        if (!watch_.waitUntilBlank({left + step, firstRow}))
            throw std::runtime_error("the line does not go away");
    }

private:
    void wander(Wanderer& wanderer, double by) {
        const Point next = wanderer.next(by);
        hand_.moveTo({static_cast<int>(next.x), static_cast<int>(next.y)});
        hand_.pause();
    }

    std::string measureLatency() {
        const auto path = measuredPath();
        std::thread moving([&] {
            for (const Pixel to : path) {
                const bool turn = to.y != hand_.at().y;
                const int direction = to.x > hand_.at().x ? 1 : -1;
                hand_.pause();
                watch_.expect({to.x + (turn ? 0 : direction * ahead), to.y});
                hand_.moveTo(to);
            }
        });
        watch_.watch(Clock::now() + late + std::chrono::seconds(path.size() / static_cast<std::size_t>(task_.rate)),
                     path.size());
        moving.join();
        std::vector<double> times;
        int missing = 0;
        for (const Probe& probe : watch_.takeProbes()) {
            if (probe.seen)
                times.push_back(milliseconds(*probe.seen - probe.sent));
            else
                ++missing;
        }
        std::sort(times.begin(), times.end());
        std::ostringstream text;
        text << "\"n\": " << path.size() << ", \"missing\": " << missing << ", \"median\": " << quantile(times, 0.5)
             << ", \"p99\": " << quantile(times, 0.99) << ", \"max\": " << quantile(times, 1);
        return text.str();
    }

    /// Movements of which the finished line shows nothing.
    int countLost() {
        const auto path = zigzag();
        hand_.moveTo({left, zigzagRow});
        for (const Pixel to : path) {
            hand_.pause();
            hand_.moveTo(to);
        }
        // Away, and the label with the pointer.
        const Pixel above{path.back().x, zigzagRow - rows * zigzagPitch - zigzagHeight};
        for (const Pixel to : {above, Pixel{scribbleFrom, above.y}}) {
            hand_.pause();
            watch_.expect(to);
            hand_.moveTo(to);
        }
        watch_.watch(Clock::now() + late, 2);
        watch_.takeProbes();
        const auto missing = [&] {
            return std::count_if(path.begin(), path.end(), [&](Pixel corner) { return !watch_.isDrawn(corner); });
        };
        for (const auto deadline = Clock::now() + late; missing() > 0 && Clock::now() < deadline;)
            Hand::rest();
        return static_cast<int>(missing());
    }

    std::string costs(Wanderer& wanderer) {
        Hand::rest();
        std::map<std::string, TaskCost> before;
        for (const auto& [name, pid] : task_.processes)
            before[name] = costOf(pid);
        const auto start = Clock::now();
        int moves = 0;
        for (; Clock::now() - start < std::chrono::duration<double>(task_.seconds); ++moves)
            wander(wanderer, speed / task_.rate);
        const double time = milliseconds(Clock::now() - start) * 1e6;
        std::ostringstream text;
        text << "\"seconds\": " << time / 1e9 << ", \"moves\": " << moves;
        for (const auto& [name, pid] : task_.processes) {
            const TaskCost used = costOf(pid) - before[name];
            text << ", \"" << name << "\": {\"cpu\": " << static_cast<double>(used.cpu) / time
                 << ", \"bytes\": " << used.bytes << ", \"writes\": " << used.writes << "}";
        }
        return text.str();
    }

    ScreenWatch watch_;
    Hand hand_;
    Task task_;
};

Task parse(const std::string& line) {
    Task task;
    std::istringstream words(line);
    words >> task.rate >> task.points >> task.seconds;
    if (!words || task.rate <= 0)
        throw std::runtime_error("not understood: " + line);
    for (std::string word; words >> word;) {
        const auto equals = word.find('=');
        task.processes[word.substr(0, equals)] = std::stoi(word.substr(equals + 1));
    }
    return task;
}

void run() {
    prctl(PR_SET_TIMERSLACK, 1UL); // nanoseconds; by default a sleep may be half a report too long
    const Paper paper;
    Bench bench;
    for (std::string line; std::getline(std::cin, line);)
        bench.measure(parse(line));
}

} // namespace
} // namespace tarvik

int main() {
    try {
        tarvik::run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "trail_pixels: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
