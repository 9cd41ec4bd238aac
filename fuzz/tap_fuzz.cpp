// The X11 tap on a private desktop: whatever hands and settings do, once every button is up the applications have seen
// a release for each press, the server takes no button for down, and the next click is a click. Each byte of an input
// is one step; see `Hand::step`. "(rr)" holds the right button and moves twice to the right.
#include "engine/gesture_engine.h"
#include "fakes/fake_engine_ports.h"
#include "fakes/fake_screens.h"
#include "fakes/recording_log.h"
#include "platform/linux/x11/x11_event_tap.h"
#include "platform/support/desktop_input.h"
#include "platform/support/eventually.h"
#include "platform/support/pointer_client.h"

#include <X11/extensions/XInput2.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <future>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <thread>

namespace tarvik::fuzz {
namespace {

/// Marks the end of what is still to come: no grab touches it.
constexpr int fenceButton = 8;
/// Longer than the tap waits for a release that has not come.
constexpr std::chrono::milliseconds longestRest(30);
constexpr std::array<const char*, 2> mice = {"mouse", "mouse2"};

/// The tap with the engine behind it, and an application that covers the screen.
class Desktop {
public:
    Desktop() { require(start(), "no tap"); }

    bool start() {
        return tap_.start([this](PointerEvent event) { return engine_.handle(std::move(event)); });
    }
    void restart() {
        tap_.stop();
        require(start(), "no tap after a stop");
    }

    void input(const std::string& line) {
        done_ += line + '\n';
        input_(line);
        read();
    }
    void note(const std::string& line) { done_ += line + '\n'; }

    void set(const Preferences& preferences) {
        tap_.run(
            [this, snapshot = std::make_shared<const Preferences>(preferences)] { engine_.setPreferences(snapshot); });
    }
    void record() {
        tap_.run([this] { engine_.setOnRecord([](const std::string&) {}); });
    }

    /// Until the tap has dealt with what the server has sent so far.
    void settle() {
        for (int round = 0; round < 20; ++round) {
            const auto done = std::make_shared<std::promise<void>>();
            tap_.run([done] { done->set_value(); });
            done->get_future().wait();
        }
    }

    void switchDevice(const char* name, bool on) {
        auto* display = client_.display();
        auto value = static_cast<unsigned char>(on);
        XIChangeProperty(display, deviceId(name), XInternAtom(display, "Device Enabled", False),
                         XInternAtom(display, "INTEGER", False), 8, XIPropModeReplace, &value, 1);
        XSync(display, False);
        note(std::string(name) + (on ? " on" : " off"));
        if (on)
            input(std::string(name) + " reconnect");
    }

    /// Every button is up: is everybody else of the same opinion?
    void requireRest() {
        // A hold whose release goes elsewhere, because its press has met a click on its way back, ends by the clock.
        std::this_thread::sleep_for(longestRest);
        // A click that is on its way back may come after the first fence, not after all of them.
        for (int fence = 0; fence < 3; ++fence)
            require(eventually([this] { return seenFence(); }), "the application gets nothing any more");
        require(eventually([this] {
                    read();
                    return client_.buttonsDown() == 0 && down_.empty();
                }),
                "a button stays down");
        // Nothing is held: a click is a click, of either trigger.
        for (const int button : {3, 2}) {
            presses_.clear();
            input("mouse click " + std::to_string(button));
            require(eventually([&] {
                        read();
                        return presses_[button] > 0 && down_.empty();
                    }),
                    "a click is lost");
            require(eventually([this] { return seenFence(); }), "the application gets nothing any more");
            require(presses_.size() == 2 && presses_[button] == 1, "a click is more than a click");
        }
        require(client_.buttonsDown() == 0, "a button stays down after a click");
        done_.clear();
        log_.clear();
    }

private:
    bool seenFence() {
        settle();
        presses_.erase(fenceButton);
        input_("mouse click " + std::to_string(fenceButton));
        return eventually([this] {
            read();
            return presses_.contains(fenceButton) && !down_.contains(fenceButton);
        });
    }

    void read() {
        for (const auto& event : client_.read()) {
            if (event.what == PointerSeen::What::scroll)
                continue;
            const bool press = event.what == PointerSeen::What::press;
            done_ += std::string("    seen: ") + (press ? "press " : "release ") + std::to_string(event.button) + '\n';
            require(press ? down_.insert(event.button).second : down_.erase(event.button) == 1,
                    press ? "a second press without a release" : "a release without a press");
            presses_[event.button] += press ? 1 : 0;
        }
    }

    int deviceId(const std::string& name) {
        int count = 0;
        int found = 0;
        auto* devices = XIQueryDevice(client_.display(), XIAllDevices, &count);
        for (int i = 0; i < count; ++i)
            found = devices[i].name == name ? devices[i].deviceid : found;
        XIFreeDeviceInfo(devices);
        return found;
    }

    void require(bool condition, const char* what) {
        if (condition)
            return;
        std::cerr << what << ", after:\n" << done_ << "(buttons down: " << client_.buttonsDown() << ")\n";
        for (const auto& line : log_.lines())
            std::cerr << "log: " << line << '\n';
        std::abort();
    }

    DesktopInput input_;
    PointerClient client_{PointerClient::Protocol::xi2, {0, 0, 1280, 800}};
    fake::FakeScreens screens_;
    RecordingLog log_;
    X11EventTap tap_{screens_, std::make_shared<const DesktopEntries>(std::vector<std::filesystem::path>(), ""), log_,
                     [] { std::abort(); }};
    FakeTrail trail_;
    FakeActions actions_;
    GestureEngine engine_{tap_, trail_, actions_, tap_.frontmost(), log_};
    std::string done_;
    std::set<int> down_;
    std::map<int, int> presses_;
};

/// Two hands with a mouse each, and a third one in the preferences.
class Hand {
public:
    explicit Hand(Desktop& desktop) : desktop_(desktop) { desktop_.set(preferences_); }

    void step(char sign) {
        if (!button(sign) && !motion(sign) && !device(sign))
            setting(sign);
    }

    void letGo() {
        if (!secondOn_)
            device('O');
        for (mouse_ = 0; mouse_ < mice.size(); ++mouse_) {
            for (const int button : std::set<int>(down_[mouse_]))
                press(button, false);
        }
        mouse_ = 0;
        desktop_.set(Preferences());
    }

private:
    bool button(char sign) {
        static constexpr std::string_view signs = "{}[]()";
        const auto index = signs.find(sign);
        if (index == std::string_view::npos)
            return false;
        press(static_cast<int>(index / 2) + 1, index % 2 == 0);
        return true;
    }
    /// Buttons do not go down twice, and a mouse that is away does nothing.
    void press(int button, bool press) {
        if (!present() || down_[mouse_].contains(button) == press)
            return;
        if (press)
            down_[mouse_].insert(button);
        else
            down_[mouse_].erase(button);
        send((press ? "press " : "release ") + std::to_string(button));
    }

    bool motion(char sign) {
        static const std::map<char, const char*> lines = {
            {'l', "move -40 0"}, {'r', "move 40 0"}, {'u', "move 0 -40"}, {'d', "move 0 40"},    {'n', "move 2 1"},
            {'+', "wheel 0 -1"}, {'-', "wheel 0 1"}, {'<', "wheel -1 0"}, {'~', "wheel 0 -0.5"},
        };
        const auto found = lines.find(sign);
        if (found == lines.end())
            return false;
        if (present())
            send(found->second);
        return true;
    }

    bool device(char sign) {
        switch (sign) {
        case '1':
            mouse_ = 0;
            return true;
        case '2':
            mouse_ = 1;
            return true;
        case 'o': // the server releases its buttons
            if (secondOn_)
                desktop_.switchDevice(mice[1], false);
            secondOn_ = false;
            down_[1].clear();
            return true;
        case 'O':
            if (!secondOn_)
                desktop_.switchDevice(mice[1], true);
            secondOn_ = true;
            return true;
        default:
            return false;
        }
    }

    void setting(char sign) {
        switch (sign) {
        case '.':
            desktop_.note("settle");
            return desktop_.settle();
        case 's':
            desktop_.note("settle, restart");
            desktop_.settle();
            return desktop_.restart();
        case 'S':
            desktop_.note("restart");
            return desktop_.restart();
        case 'w':
            desktop_.note("record");
            return desktop_.record();
        case 't':
            preferences_.triggerButton =
                preferences_.triggerButton == TriggerButton::right ? TriggerButton::middle : TriggerButton::right;
            break;
        case 'e':
            preferences_.enabled = !preferences_.enabled;
            break;
        case 'b':
            preferences_.scrollBinding =
                preferences_.scrollBinding == ScrollBinding::none ? ScrollBinding::tabs : ScrollBinding::none;
            break;
        default:
            return;
        }
        desktop_.note(std::string("setting ") + sign);
        desktop_.set(preferences_);
    }

    bool present() const { return mouse_ == 0 || secondOn_; }
    void send(const std::string& what) { desktop_.input(std::string(mice[mouse_]) + ' ' + what); }

    Desktop& desktop_;
    Preferences preferences_;
    std::size_t mouse_ = 0;
    bool secondOn_ = true;
    std::array<std::set<int>, 2> down_;
};

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tarvik::fuzz;
    static Desktop desktop;
    desktop.input("mouse moveto 640 400");
    Hand hand(desktop);
    for (std::size_t i = 0; i < size; ++i)
        hand.step(static_cast<char>(data[i]));
    hand.letGo();
    desktop.requireRest();
    return 0;
}
