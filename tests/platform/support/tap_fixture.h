// The tap, a handler that does as the test says, and an application.
#pragma once

#include <gmock/gmock.h> // before Xlib, whose macros it does not survive

#include "platform/linux/x11/x11_event_tap.h"

#include "fakes/fake_screens.h"
#include "fakes/recording_log.h"
#include "platform/support/desktop_input.h"
#include "platform/support/eventually.h"
#include "platform/support/pointer_client.h"

#include <X11/extensions/XInput2.h>
#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

using Lines = std::vector<std::string>;

/// What the handler does with a press, and with turns of the wheel during the hold.
enum class Press { refuse, take, giveBack };
enum class Wheel { swallow, pass };

class X11Tap : public testing::Test {
protected:
    void SetUp() override {
        input("mouse moveto 300 200");
        ASSERT_TRUE(start());
    }
    void TearDown() override {
        tap.stop();
        EXPECT_EQ(client.buttonsDown(), 0U);
    }

    virtual bool start() {
        return tap.start([this](PointerEvent event) { return decide(std::move(event)); });
    }

    std::optional<PointerEvent> decide(PointerEvent event) {
        using enum PointerEventType;
        switch (event.type) {
        case rightDown:
        case otherDown:
            note("down", event);
            if (const auto task = taken(whilePressWaits_))
                task();
            if (press == Press::refuse)
                return event;
            down = event;
            return std::nullopt;
        case rightUp:
        case otherUp:
            note("up", event);
            if (press == Press::giveBack) {
                down->location = event.location;
                tap.post(*down);
                tap.post(event);
            }
            return std::nullopt;
        case leftDown:
        case leftUp:
            return event; // not ours to decide
        case scrollWheel: {
            const std::lock_guard lock(mutex);
            asked_.push_back(fmt::format("wheel {} {} ({:g})", event.vertical.line, event.horizontal.line,
                                         event.vertical.fixed + event.horizontal.fixed));
            return wheel == Wheel::pass ? std::optional(event) : std::nullopt;
        }
        case holdLost: {
            const std::lock_guard lock(mutex);
            asked_.push_back("lost");
            return std::nullopt;
        }
        default:
            note("drag", event);
            return std::nullopt;
        }
    }

    /// Runs on the tap's thread when the handler is asked about the next press.
    void whilePressWaits(std::function<void()> task) {
        const std::lock_guard lock(mutex);
        whilePressWaits_ = std::move(task);
    }
    template <typename T> T taken(T& value) {
        const std::lock_guard lock(mutex);
        return std::exchange(value, {});
    }

    void note(const char* what, const PointerEvent& event) {
        const std::lock_guard lock(mutex);
        asked_.push_back(fmt::format("{} {} at {:g},{:g}", what, event.button, event.location.x, event.location.y));
    }

    /// Runs on the tap's thread, between two events, once everything that the server has sent so far is dealt with.
    void onTap(const std::function<void()>& command) {
        // Commands also run between two events that have arrived: more rounds than events can be waiting.
        for (int round = 0; round < 100; ++round) {
            XSync(client.display(), False); // what the devices did, and what the tap asked for, has been sent
            oneRound([] {});
        }
        oneRound(command);
    }
    void oneRound(const std::function<void()>& command) {
        const auto done = std::make_shared<std::promise<void>>();
        tap.run([&command, done] {
            command();
            done->set_value();
        });
        done->get_future().wait();
    }

    /// What the handler has been asked since the last time, once there are as many lines.
    Lines asked(std::size_t count) {
        eventually([&] {
            const std::lock_guard lock(mutex);
            return asked_.size() >= count;
        });
        onTap([] {});
        return taken(asked_);
    }
    /// These lines and no more.
    void expectAsked(const Lines& expected) { EXPECT_EQ(asked(expected.size()), expected); }

    /// What the application has seen since the last time, once `until` is there. Ends with a click of a button that
    /// nobody cares for, so that nothing is still to come.
    Lines seenUntil(const std::function<bool(const Lines&)>& until) {
        Lines lines;
        const auto read = [&] {
            for (const auto& event : client.read())
                lines.push_back(text(event));
        };
        EXPECT_TRUE(eventually([&] {
            read();
            return until(lines);
        })) << testing::PrintToString(lines);
        onTap([] {});
        input("mouse click 8");
        EXPECT_TRUE(eventually([&] {
            read();
            return std::any_of(lines.begin(), lines.end(),
                               [](const auto& line) { return line.starts_with("release 8"); });
        }));
        std::erase_if(lines, [](const std::string& line) { return line.find(" 8 ") != std::string::npos; });
        return lines;
    }
    /// These lines and no more.
    void expectSeen(const Lines& expected) {
        EXPECT_EQ(seenUntil([&](const Lines& lines) { return lines.size() >= expected.size(); }), expected);
    }

    std::string text(const PointerSeen& event) {
        if (event.what == PointerSeen::What::scroll)
            return fmt::format("scroll {:g}", event.scrolled / notch);
        return fmt::format("{} {} at {:g},{:g} {}", event.what == PointerSeen::What::press ? "press" : "release",
                           event.button, event.location.x, event.location.y, client.deviceName(event.source));
    }

    int deviceId(const std::string& name) {
        int count = 0;
        int found = 0;
        auto* devices = XIQueryDevice(client.display(), XIAllDevices, &count);
        for (int i = 0; i < count; ++i)
            found = devices[i].name == name ? devices[i].deviceid : found;
        XIFreeDeviceInfo(devices);
        return found;
    }

    static constexpr double notch = 120;

    DesktopInput input;
    PointerClient client{PointerClient::Protocol::xi2, {100, 100, 600, 400}};
    fake::FakeScreens screens;
    RecordingLog log;
    X11EventTap tap{screens, std::make_shared<const DesktopEntries>(std::vector<std::filesystem::path>(), ""), log,
                    [] {}};

    // Set while nothing is held; read on the tap's thread.
    std::atomic<Press> press = Press::giveBack;
    std::atomic<Wheel> wheel = Wheel::swallow;
    std::optional<PointerEvent> down;
    std::mutex mutex;
    Lines asked_;
    std::function<void()> whilePressWaits_;
};

inline const Lines rightClick = {"press 3 at 300,200 mouse", "release 3 at 300,200 mouse"};

} // namespace tarvik
