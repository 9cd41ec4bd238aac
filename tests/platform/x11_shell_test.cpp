// What the desktop is asked to do with real windows under a real window manager.
#include <gmock/gmock.h> // before Xlib, whose macros it does not survive

#include "platform/linux/x11/x11_desktop_shell.h"

#include "fakes/recording_log.h"
#include "platform/support/eventually.h"
#include "platform/support/x_client.h"

#include <X11/Xatom.h>

#include <filesystem>

namespace tarvik {
namespace {

using testing::ElementsAre;

class X11Shell : public testing::Test {
protected:
    void TearDown() override {
        if (ewmh.showingDesktop())
            ewmh.showDesktop(false);
        goTo(0);
    }

    void goTo(std::uint32_t desktop) {
        ewmh.setCurrentDesktop(desktop);
        ASSERT_TRUE(isOn(desktop));
    }
    bool isOn(std::uint32_t desktop) {
        return eventually([&] { return ewmh.currentDesktop() == desktop; });
    }
    XWindow open(const std::string& application) {
        return client.open({.instance = application, .className = application});
    }

    RecordingLog log;
    XClient client;
    const X11Ewmh& ewmh = client.ewmh();
    std::unique_ptr<X11Connection> x = X11Connection::open();
    X11Ewmh own{*x};
    X11DesktopShell shell{own, std::make_shared<DesktopEntries>(std::vector<std::filesystem::path>(), ""), log};
};

TEST_F(X11Shell, desktopsLeftAndRightUpToTheEdge) {
    goTo(0);
    EXPECT_TRUE(shell.perform(ActionKind::spaceRight));
    EXPECT_TRUE(isOn(1));
    EXPECT_TRUE(shell.perform(ActionKind::spaceLeft));
    EXPECT_TRUE(isOn(0));
    EXPECT_TRUE(shell.perform(ActionKind::spaceLeft));
    goTo(3);
    EXPECT_TRUE(shell.perform(ActionKind::spaceRight));
    EXPECT_THAT(log.lines(), ElementsAre("desktop 2 of 4", "desktop 1 of 4", "no desktop on that side of 1 of 4",
                                         "no desktop on that side of 4 of 4"));
    EXPECT_EQ(ewmh.currentDesktop(), 3U);
}

TEST_F(X11Shell, desktopsFollowThePagersLayout) {
    const long twoColumns[] = {0, 2, 2, 0};
    XChangeProperty(client.connection().display(), client.connection().root(), client.atoms().desktopLayout,
                    XA_CARDINAL, 32, PropModeReplace, reinterpret_cast<const unsigned char*>(twoColumns), 4);
    XSync(client.connection().display(), False);
    goTo(1);
    EXPECT_TRUE(shell.perform(ActionKind::spaceRight));
    EXPECT_THAT(log.lines(), ElementsAre("no desktop on that side of 2 of 4"));
    goTo(2);
    EXPECT_TRUE(shell.perform(ActionKind::spaceRight));
    EXPECT_TRUE(isOn(3));
    XDeleteProperty(client.connection().display(), client.connection().root(), client.atoms().desktopLayout);
    XSync(client.connection().display(), False);
}

TEST_F(X11Shell, showDesktopAndBack) {
    const auto window = open("one");
    EXPECT_TRUE(shell.perform(ActionKind::showDesktop));
    EXPECT_TRUE(eventually([&] { return ewmh.showingDesktop() && !ewmh.isViewable(window); }));
    EXPECT_TRUE(shell.perform(ActionKind::showDesktop));
    EXPECT_TRUE(eventually([&] { return !ewmh.showingDesktop() && ewmh.isViewable(window); }));
    EXPECT_THAT(log.lines(), ElementsAre("show desktop", "show windows"));
}

TEST_F(X11Shell, windowsOfTheApplicationInTheOrderTheyAppeared) {
    const auto first = open("one");
    const auto second = open("one");
    const auto other = open("two");
    const auto third = open("one");
    const auto minimized = open("one");
    ewmh.minimize(minimized);
    ASSERT_TRUE(eventually([&] { return ewmh.isMinimized(minimized); }));
    ASSERT_TRUE(client.activate(second));
    for (const auto expected : {third, first, second}) {
        EXPECT_TRUE(shell.perform(ActionKind::nextWindow));
        EXPECT_TRUE(client.becomesActive(expected));
    }
    for (const auto expected : {first, third, second}) {
        EXPECT_TRUE(shell.perform(ActionKind::previousWindow));
        EXPECT_TRUE(client.becomesActive(expected));
    }
    ASSERT_TRUE(client.activate(other));
    log.clear();
    EXPECT_TRUE(shell.perform(ActionKind::nextWindow));
    EXPECT_THAT(log.lines(), ElementsAre("no other window of the application"));
    EXPECT_EQ(ewmh.activeWindow(), other);
}

TEST_F(X11Shell, lastUsedApplicationGoesToAndFro) {
    const auto one = open("one");
    const auto two = open("two");
    const auto onTop = client.open({.instance = "top", .className = "top", .state = client.atoms().stateAbove});
    const auto three = open("three");
    ewmh.minimize(three);
    ASSERT_TRUE(eventually([&] { return ewmh.isMinimized(three); }));
    ASSERT_TRUE(client.activate(one));
    ASSERT_TRUE(client.activate(two));
    for (const auto expected : {one, two, one}) {
        EXPECT_TRUE(shell.perform(ActionKind::previousApp));
        EXPECT_TRUE(client.becomesActive(expected));
    }
    client.destroy(two);
    ASSERT_TRUE(client.activate(one));
    EXPECT_TRUE(shell.perform(ActionKind::previousApp));
    EXPECT_TRUE(client.becomesActive(onTop));
}

TEST_F(X11Shell, closeAsksTheActiveWindow) {
    const auto bystander = open("one");
    const auto window = open("one");
    EXPECT_TRUE(shell.perform(ActionKind::closeWindow));
    EXPECT_TRUE(eventually([&] { return client.closeRequests(window) == 1; }));
    EXPECT_EQ(client.closeRequests(bystander), 0);
}

TEST_F(X11Shell, hideMinimizesEveryWindowOfTheApplication) {
    const auto first = open("one");
    const auto other = open("two");
    const auto second = open("one");
    EXPECT_TRUE(shell.perform(ActionKind::hideApp));
    EXPECT_TRUE(eventually([&] { return ewmh.isMinimized(first) && ewmh.isMinimized(second); }));
    EXPECT_TRUE(client.becomesActive(other));
    EXPECT_FALSE(ewmh.isMinimized(other));
}

TEST_F(X11Shell, nothingToActOnIsTakenAllTheSame) {
    ASSERT_TRUE(eventually([&] { return !ewmh.activeWindow() || ewmh.clients().empty(); }));
    for (const auto kind :
         {ActionKind::nextWindow, ActionKind::previousApp, ActionKind::closeWindow, ActionKind::hideApp})
        EXPECT_TRUE(shell.perform(kind));
}

TEST_F(X11Shell, whatNobodyOffersIsRefused) {
    for (const auto kind : {ActionKind::missionControl, ActionKind::appExpose, ActionKind::launchpad})
        EXPECT_FALSE(shell.perform(kind));
}

} // namespace
} // namespace tarvik
