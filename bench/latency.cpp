// How long after the hand an application learns of it: one program that is both, so that one clock does.
//
//   latency
//
// Reads lines "click HOLD REST COUNT", "press REST COUNT" or "gesture REST COUNT" from standard input, for as long as
// there are any; HOLD, while the button is down, and REST, after each round, are milliseconds. Answers each with one
// line: how many were lost, and the microseconds of the others, from the event of the mouse that decides to the first
// event that the application reads:
//
//   click    release of the right button, pressed for HOLD milliseconds -> the press that is given back
//   press    press -> press
//   gesture  release after a stroke -> the first key
//
// To be started with --raw-input by scripts/bench.
#include "driver_mouse.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XInput2.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <poll.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace tarvik;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int right = 3;
constexpr milliseconds lost(500);

void wait(milliseconds time) { std::this_thread::sleep_for(time); }

/// Fills the screen, has the focus and is the active window, without a window manager.
class Application {
public:
    Application() : display_(XOpenDisplay(nullptr)) {
        int unused = 0;
        if (!display_ || !XQueryExtension(display_, "XInputExtension", &opcode_, &unused, &unused))
            throw std::runtime_error("no display with the X Input Extension");
        const auto root = DefaultRootWindow(display_);
        const auto screen = DefaultScreen(display_);
        const auto width = static_cast<unsigned>(DisplayWidth(display_, screen));
        const auto height = static_cast<unsigned>(DisplayHeight(display_, screen));
        const auto window = XCreateSimpleWindow(display_, root, 0, 0, width, height, 0, 0, 0);
        char name[] = "latency";
        XClassHint application = {name, name};
        XSetClassHint(display_, window, &application);
        unsigned char bits[4] = {};
        for (const int event : {XI_ButtonPress, XI_ButtonRelease, XI_KeyPress, XI_KeyRelease})
            XISetMask(bits, event);
        XIEventMask mask = {XIAllMasterDevices, sizeof bits, bits};
        XISelectEvents(display_, window, &mask, 1);
        XMapWindow(display_, window);
        XSync(display_, False);
        XSetInputFocus(display_, window, RevertToParent, CurrentTime);
        const long active = static_cast<long>(window);
        XChangeProperty(display_, root, XInternAtom(display_, "_NET_ACTIVE_WINDOW", False), XA_WINDOW, 32,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(&active), 1);
        XSync(display_, False);
    }
    ~Application() { XCloseDisplay(display_); }
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// When the next event of this kind was read; nothing when none comes.
    std::optional<Clock::time_point> next(int type) {
        pollfd source = {ConnectionNumber(display_), POLLIN, 0};
        const auto deadline = Clock::now() + lost;
        do {
            while (XPending(display_) > 0) {
                XEvent event;
                XNextEvent(display_, &event);
                if (event.type == GenericEvent && event.xcookie.extension == opcode_ && event.xcookie.evtype == type)
                    return Clock::now();
            }
            poll(&source, 1, static_cast<int>(lost.count()));
        } while (Clock::now() < deadline);
        return std::nullopt;
    }
    void forget() { XSync(display_, True); }

private:
    Display* const display_;
    int opcode_ = 0;
};

class Hand {
public:
    /// One round: what is done, and which event ends it.
    using Duration = std::optional<Clock::duration>;

    Duration click(milliseconds hold) {
        mouse_.button(right, true);
        wait(hold);
        return timed(false, XI_ButtonPress, XI_ButtonRelease);
    }
    Duration press() {
        const auto time = timed(true, XI_ButtonPress, std::nullopt);
        mouse_.button(right, false);
        application_.next(XI_ButtonRelease);
        return time;
    }
    Duration gesture() {
        mouse_.button(right, true);
        wait(milliseconds(5));
        for (int i = 0; i < 8; ++i) {
            mouse_.moveBy(rightwards_ ? 12 : -12, 0);
            wait(milliseconds(2));
        }
        rightwards_ = !rightwards_;
        return timed(false, XI_KeyPress, std::nullopt);
    }
    void rest(milliseconds time) {
        wait(time);
        application_.forget();
    }

private:
    Duration timed(bool down, int expected, std::optional<int> last) {
        const auto start = Clock::now();
        mouse_.button(right, down);
        const auto seen = application_.next(expected);
        if (seen && last)
            application_.next(*last);
        return seen ? Duration(*seen - start) : std::nullopt;
    }

    Application application_;
    DriverMouse mouse_{"TARVIK_INPUT_MOUSE"};
    bool rightwards_ = true;
};

void measure(Hand& hand, const std::string& line) {
    std::istringstream words(line);
    std::string what;
    int hold = 0;
    int rest = 0;
    int count = 0;
    words >> what;
    if (what == "click")
        words >> hold;
    words >> rest >> count;
    int missing = 0;
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const auto time = what == "click"   ? hand.click(milliseconds(hold))
                          : what == "press" ? hand.press()
                                            : hand.gesture();
        if (time)
            times.push_back(std::chrono::duration<double, std::micro>(*time).count());
        else
            ++missing;
        hand.rest(milliseconds(rest));
    }
    std::printf("%d", missing);
    for (const double time : times)
        std::printf(" %.1f", time);
    std::puts("");
    std::fflush(stdout);
}

} // namespace

int main() {
    try {
        Hand hand;
        for (std::string line; std::getline(std::cin, line);)
            measure(hand, line);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "latency: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
