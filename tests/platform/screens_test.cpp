// The list of monitors against RandR of a real server.
#include "platform/linux/x11/x11_screens.h"
#include "platform/support/event_loop.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

#include <xcb/randr.h>

#include <cstring>

namespace tarvik {
namespace {

TEST(X11UnitsPerPoint, FirstAnswerAboveOneCounts) {
    EXPECT_EQ(x11UnitsPerPoint(1.5, "Xft.dpi:\t192\n", "2"), 1.5);
    EXPECT_EQ(x11UnitsPerPoint(1, "Xft.antialias: 1\nXft.dpi:\t192\nXft.hinting: 1\n", "3"), 2);
    EXPECT_EQ(x11UnitsPerPoint(1, "Xft.dpi: 120", ""), 1.25);
    EXPECT_EQ(x11UnitsPerPoint(1, "Xft.dpi: 100", ""), 1);
    EXPECT_EQ(x11UnitsPerPoint(1, "Xft.dpi: 96\n", "2"), 2);
    EXPECT_EQ(x11UnitsPerPoint(0.75, "Xft.dpi: 72\n", "0.5"), 1);
    EXPECT_EQ(x11UnitsPerPoint(1, "Xft.dpi: many\nnXft.dpi: 300\n", "none"), 1);
}

/// Changes the list of monitors as "xrandr --setmonitor" does.
class Monitors {
public:
    Monitors() : xcb_(xcb_connect(nullptr, nullptr)), root_(xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data->root) {}
    ~Monitors() { xcb_disconnect(xcb_); }
    Monitors(const Monitors&) = delete;
    Monitors& operator=(const Monitors&) = delete;

    /// One that owns the real output takes the place of the monitor that the server makes of it.
    void set(const char* name, std::int16_t x, std::uint16_t width, bool primary, bool ownsOutput) {
        struct {
            xcb_randr_monitor_info_t info;
            xcb_randr_output_t output;
        } monitor{
            {.name = atom(name), .primary = primary, .nOutput = ownsOutput, .x = x, .width = width, .height = 800},
            output()};
        xcb_randr_set_monitor(xcb_, root_, &monitor.info);
        xcb_flush(xcb_);
    }
    void remove(const char* name) {
        xcb_randr_delete_monitor(xcb_, root_, atom(name));
        xcb_flush(xcb_);
    }

private:
    xcb_atom_t atom(const char* name) {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            xcb_, xcb_intern_atom(xcb_, false, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr));
        return reply->atom;
    }

    xcb_randr_output_t output() {
        const XcbReply<xcb_randr_get_screen_resources_current_reply_t> reply(
            xcb_randr_get_screen_resources_current_reply(xcb_, xcb_randr_get_screen_resources_current(xcb_, root_),
                                                         nullptr));
        return xcb_randr_get_screen_resources_current_outputs(reply.get())[0];
    }

    xcb_connection_t* const xcb_;
    const xcb_window_t root_;
};

TEST(X11Screens, FollowsTheMonitorsPrimaryFirstWithoutMirrors) {
    X11MainConnection connection;
    X11Screens screens(connection);
    const Screen whole{{0, 0, 1280, 800}, 1};
    ASSERT_EQ(screens.screens(), std::vector{whole});
    int changes = 0;
    screens.onChange([&] { ++changes; });

    Monitors monitors;
    const auto becomes = [&](const std::vector<Screen>& expected) {
        return eventuallyInLoop([&] { return screens.screens() == expected; });
    };
    const Screen left{{0, 0, 640, 800}, 1};
    const Screen right{{640, 0, 640, 800}, 1};
    monitors.set("Left", 0, 640, false, true);
    EXPECT_TRUE(becomes({left}));
    monitors.set("Right", 640, 640, true, false);
    EXPECT_TRUE(becomes({right, left}));
    EXPECT_EQ(changes, 2);

    monitors.set("Mirror", 700, 500, false, false);
    monitors.set("Twin", 640, 640, false, false);
    monitors.remove("Left");
    EXPECT_TRUE(becomes({whole}));
    EXPECT_EQ(changes, 3);
}

} // namespace
} // namespace tarvik

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
