// The list of monitors against RandR of a real server.
#include "platform/linux/x11/x11_screens.h"
#include "platform/support/event_loop.h"

#include <gtest/gtest.h> // before Xlib, whose macros take the names None and Bool

#include <QGuiApplication>

#include <X11/Xatom.h>
#include <X11/extensions/Xrandr.h>

namespace tarvik {
namespace {

TEST(X11UnitsPerPoint, WhatTheToolkitWasToldCountsFirstThenTheDesktopsScale) {
    const auto told = [](double ratio) { return x11UnitsPerPoint({ratio, true, "Xft.dpi: 192", "3"}); };
    EXPECT_EQ(told(1.5), 1.5);
    EXPECT_EQ(told(1), 1); // one of two monitors
    EXPECT_EQ(told(0.5), 1);

    const auto found = [](double ratio, std::string_view resources, std::string_view gdkScale) {
        return x11UnitsPerPoint({ratio, false, resources, gdkScale});
    };
    EXPECT_EQ(found(1, "Xft.antialias: 1\nXft.dpi:\t192\nXft.hinting: 1\n", "3"), 2);
    EXPECT_EQ(found(2, "Xft.dpi: 120", ""), 1.25); // changed after the toolkit had read it
    EXPECT_EQ(found(1.04, "Xft.dpi: 100", ""), 1);
    EXPECT_EQ(found(1, "Xft.dpi: 96\n", "2"), 2);
    EXPECT_EQ(found(0.75, "Xft.dpi: 72\n", "0.5"), 1);
    EXPECT_EQ(found(1.5, "", "3"), 1.5);
    EXPECT_EQ(found(1, "Xft.dpi: many\nnXft.dpi: 300\n", "none"), 1);
}

/// Changes the list of monitors as "xrandr --setmonitor" does.
class Monitors {
public:
    Monitors()
        : display_(XOpenDisplay(nullptr))
        , root_(DefaultRootWindow(display_))
        , resources_(XRRGetScreenResourcesCurrent(display_, root_)) {}
    ~Monitors() {
        XRRFreeScreenResources(resources_);
        XCloseDisplay(display_);
    }
    Monitors(const Monitors&) = delete;
    Monitors& operator=(const Monitors&) = delete;

    /// One that owns the real output takes the place of the monitor that the server makes of it.
    void set(const char* name, int x, int width, bool primary, bool ownsOutput) {
        XRRMonitorInfo monitor{.name = atom(name),
                               .primary = primary,
                               .noutput = ownsOutput,
                               .x = x,
                               .width = width,
                               .height = 800,
                               .outputs = resources_->outputs};
        XRRSetMonitor(display_, root_, &monitor);
        XFlush(display_);
    }
    void setResources(const std::string& text) {
        XChangeProperty(display_, root_, XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
        XFlush(display_);
    }
    void remove(const char* name) {
        XRRDeleteMonitor(display_, root_, atom(name));
        XFlush(display_);
    }

private:
    Atom atom(const char* name) { return XInternAtom(display_, name, False); }

    Display* const display_;
    const ::Window root_;
    XRRScreenResources* const resources_;
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

    monitors.setResources("Xft.dpi:\t192\n");
    EXPECT_TRUE(becomes({Screen{whole.frame, 2}}));
    EXPECT_EQ(changes, 4);
}

} // namespace
} // namespace tarvik

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
