// Errors and the end of connections.
#include <gmock/gmock.h> // before Xlib, whose macros it does not survive

#include "platform/linux/x11/x11_actions_platform.h"
#include "platform/linux/x11/x11_error_trap.h"

#include "actions/key_sequence.h"
#include "fakes/recording_log.h"
#include "platform/support/x_client.h"

#include <X11/Xutil.h>

#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

namespace tarvik {
namespace {

using testing::ElementsAre;

constexpr XWindow nowhere = 0x1;

/// What the next file that the process opens will get.
int nextDescriptor() {
    const int descriptor = dup(STDERR_FILENO);
    close(descriptor);
    return descriptor;
}

void makeError(const X11Connection& x) { XMapWindow(x.display(), nowhere); }

TEST(X11ErrorTrap, tellsTheFirstErrorOfItsStretch) {
    const auto x = X11Connection::open();
    makeError(*x); // before the trap
    X11ErrorTrap outer(x->display());
    EXPECT_EQ(outer.sync(), Success);
    {
        X11ErrorTrap inner(x->display());
        makeError(*x);
        XFreePixmap(x->display(), nowhere);
        EXPECT_EQ(inner.sync(), BadWindow);
    }
    EXPECT_EQ(outer.sync(), BadWindow);
    EXPECT_EQ(X11ErrorTrap(x->display()).sync(), Success);
}

TEST(X11ErrorTrap, threadsWithTheirOwnConnectionsDoNotMix) {
    std::atomic<int> wrong = 0;
    const auto work = [&wrong](bool faulty) {
        const auto x = X11Connection::open();
        for (int i = 0; i < 300; ++i) {
            X11ErrorTrap trap(x->display());
            if (faulty)
                makeError(*x);
            wrong += trap.sync() != (faulty ? BadWindow : Success);
        }
    };
    std::thread one(work, true);
    std::thread other(work, false);
    one.join();
    other.join();
    EXPECT_EQ(wrong, 0);
}

// As when the server goes down.
TEST(X11ActionsPlatform, aBrokenConnectionIsLoggedOnceAndHarmless) {
    RecordingLog log;
    int lost = 0;
    XClient client;
    const auto window = client.open();
    const auto entries = std::make_shared<DesktopEntries>(std::vector<std::filesystem::path>(), "");
    const int socket = nextDescriptor();
    const auto platform = X11ActionsPlatform::open(entries, log, [&lost] { ++lost; });
    const auto target = platform->windows().targetWindow(std::nullopt);
    ASSERT_TRUE(target);
    ASSERT_EQ(shutdown(socket, SHUT_RDWR), 0);
    EXPECT_NE(target->minimize(), 0);
    platform->keys().post(keySequence({key::f11, 0}));
    EXPECT_FALSE(platform->shell().perform(ActionKind::spaceRight));
    EXPECT_EQ(platform->windows().targetWindow(Point{1, 1}), nullptr);
    EXPECT_EQ(lost, 1);
    EXPECT_THAT(log.lines(), ElementsAre("the display server has gone"));
    EXPECT_TRUE(client.ewmh().isViewable(window));
}

TEST(X11Connection, noServerIsNoConnection) {
    const std::string display = std::getenv("DISPLAY");
    setenv("DISPLAY", ":4711", 1);
    EXPECT_EQ(X11Connection::open(), nullptr);
    setenv("DISPLAY", display.c_str(), 1);
}

} // namespace
} // namespace tarvik
