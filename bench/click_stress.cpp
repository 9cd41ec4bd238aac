// Clicks as fast as no hand can, from several devices at once, and an application that counts what it gets.
//
//   click_stress CLICKS CLIENT INTERVAL
//
// CLIENT is xi2 or core; INTERVAL the milliseconds from one right click to the next, at least 20. To be started by
// click-stress. Ends with 0 when no click was lost, doubled or torn, and no button is left down.
#include "driver_mouse.h"

#include "platform/support/pointer_client.h"

#include <X11/extensions/XTest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <poll.h>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace tarvik;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int left = 1;
constexpr int right = 3;

/// At which the pauses between other input are as written.
constexpr milliseconds fastest(20);

/// However late the injector wakes up, the button is up for so long between two clicks.
constexpr milliseconds shortestGap(5);

/// The same sequence in every run.
class Dice {
public:
    explicit Dice(unsigned seed) : generator_(seed) {}
    int operator()(int lowest, int highest) { return std::uniform_int_distribution(lowest, highest)(generator_); }

private:
    std::mt19937 generator_;
};

void wait(int ms) { std::this_thread::sleep_for(milliseconds(ms)); }

/// Input that another program makes.
class FakeMouse {
public:
    FakeMouse() : display_(XOpenDisplay(nullptr)) {
        if (!display_)
            throw std::runtime_error("no display");
    }
    ~FakeMouse() { XCloseDisplay(display_); }
    FakeMouse(const FakeMouse&) = delete;
    FakeMouse& operator=(const FakeMouse&) = delete;

    void button(int number, bool press) {
        XTestFakeButtonEvent(display_, static_cast<unsigned>(number), press, CurrentTime);
        XFlush(display_);
    }
    void moveBy(int dx, int dy) {
        XTestFakeRelativeMotionEvent(display_, dx, dy, CurrentTime);
        XFlush(display_);
    }

private:
    Display* const display_;
};

/// The application, on a thread of its own.
class Application {
public:
    explicit Application(PointerClient::Protocol protocol)
        : client_(protocol, {0, 0, 1280, 800}), thread_([this] { run(); }) {}
    ~Application() {
        ending_ = true;
        thread_.join();
    }

    std::vector<PointerSeen> seen() const {
        const std::lock_guard lock(mutex_);
        return seen_;
    }
    /// After it has been idle for a second.
    std::vector<PointerSeen> seenInTheEnd() const {
        auto all = seen();
        for (auto quietSince = Clock::now(); Clock::now() - quietSince < std::chrono::seconds(1); wait(10)) {
            if (auto now = seen(); now.size() != all.size()) {
                all = std::move(now);
                quietSince = Clock::now();
            }
        }
        return all;
    }
    const PointerClient& client() const { return client_; }

private:
    void run() {
        pollfd source = {ConnectionNumber(client_.display()), POLLIN, 0};
        while (!ending_) {
            const auto events = client_.read();
            {
                const std::lock_guard lock(mutex_);
                seen_.insert(seen_.end(), events.begin(), events.end());
            }
            if (events.empty())
                poll(&source, 1, 50);
        }
    }

    PointerClient client_;
    mutable std::mutex mutex_;
    std::vector<PointerSeen> seen_;
    std::atomic<bool> ending_ = false;
    std::thread thread_;
};

/// What a second mouse and another program do meanwhile, at the same pace: returns the number of left clicks.
int disturb(const std::atomic<bool>& done, milliseconds interval) {
    DriverMouse mouse("TARVIK_INPUT_MOUSE2");
    FakeMouse fake;
    Dice dice(7);
    int clicks = 0;
    const auto click = [&](auto& device) {
        device.button(left, true);
        wait(dice(1, 15));
        device.button(left, false);
        ++clicks;
    };
    while (!done) {
        for (int i = dice(1, 6); i > 0; --i) {
            mouse.moveBy(dice(-9, 9), dice(-9, 9));
            wait(dice(0, 3));
        }
        switch (dice(0, 3)) {
        case 0:
            click(mouse);
            break;
        case 1:
            click(fake);
            break;
        case 2:
            mouse.wheel(dice(0, 1) ? 1 : -1);
            break;
        default:
            fake.moveBy(dice(-20, 20), dice(-20, 20));
        }
        wait(dice(2, 12) * static_cast<int>(interval / fastest));
    }
    return clicks;
}

enum class Origin { mouse, otherProgram };

std::vector<Origin> clickRight(int count, milliseconds interval) {
    DriverMouse mouse("TARVIK_INPUT_MOUSE");
    FakeMouse fake;
    Dice dice(3);
    std::vector<Origin> sent;
    const auto click = [&](auto& device, Origin origin) {
        device.button(right, true);
        sent.push_back(origin);
        wait(dice(3, 14));
        device.button(right, false);
    };
    auto next = Clock::now();
    for (int i = 0; i < count; ++i) {
        if (i % 5 == 4)
            click(fake, Origin::otherProgram);
        else
            click(mouse, Origin::mouse);
        next = std::max(next + interval, Clock::now() + shortestGap);
        std::this_thread::sleep_until(next);
    }
    return sent;
}

struct Count {
    int presses = 0;
    int releases = 0;
    /// A press of a button that was down, or a release of one that was up.
    int torn = 0;
    bool down = false;
};

Count countOf(int button, const std::vector<PointerSeen>& seen) {
    Count count;
    for (const auto& event : seen) {
        if (event.button != button || event.what == PointerSeen::What::scroll)
            continue;
        const bool press = event.what == PointerSeen::What::press;
        count.torn += press == count.down;
        ++(press ? count.presses : count.releases);
        count.down = press;
    }
    return count;
}

bool report(const char* name, int sent, const Count& count) {
    std::printf("%s %d sent, %d seen, %d lost, %d doubled, %d torn, %d stuck\n", name, sent, count.presses,
                std::max(0, sent - count.presses), std::max(0, count.presses - sent), count.torn, count.down ? 1 : 0);
    return count.presses == sent && count.releases == sent && count.torn == 0 && !count.down;
}

/// Whether the right clicks came in order, each from the device that made it. Equal sequences also exclude a loss that
/// a doubled click hides.
bool inOrder(const std::vector<Origin>& sent, const std::vector<PointerSeen>& seen, const PointerClient& client) {
    std::vector<Origin> got;
    for (const auto& event : seen) {
        if (event.button == right && event.what == PointerSeen::What::press)
            got.push_back(client.deviceName(event.source) == "mouse" ? Origin::mouse : Origin::otherProgram);
    }
    return got == sent;
}

int run(int clicks, bool core, milliseconds interval) {
    const Application application(core ? PointerClient::Protocol::core : PointerClient::Protocol::xi2);
    std::atomic<bool> done = false;
    int leftSent = 0;
    std::thread disturber([&] { leftSent = disturb(done, interval); });
    const auto start = Clock::now();
    const auto sent = clickRight(clicks, interval);
    done = true;
    disturber.join();
    const std::chrono::duration<double> time = Clock::now() - start;

    const auto seen = application.seenInTheEnd();
    const unsigned down = application.client().buttonsDown();
    bool good = report("right:", clicks, countOf(right, seen));
    good &= report("left: ", leftSent, countOf(left, seen));
    good &= down == 0;
    const bool ordered = core || inOrder(sent, seen, application.client());
    std::printf("order %s; buttons down in the end %#x; %.1f s\n",
                core      ? "not visible"
                : ordered ? "equal"
                          : "differs",
                down, time.count());
    return good && ordered ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: click_stress CLICKS xi2|core INTERVAL\n");
        return EXIT_FAILURE;
    }
    try {
        return run(std::stoi(argv[1]), std::string(argv[2]) == "core",
                   std::max(fastest, milliseconds(std::stoi(argv[3]))));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "click_stress: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
