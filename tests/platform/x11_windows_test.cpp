// Finding windows, acting on them, and whom they belong to.
#include <gmock/gmock.h> // before Xlib, whose macros it does not survive

#include "platform/linux/x11/x11_applications.h"
#include "platform/linux/x11/x11_property.h"
#include "platform/linux/x11/x11_windows.h"

#include "platform/support/eventually.h"
#include "platform/support/x_client.h"

#include <X11/Xatom.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tarvik {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class X11WindowsTest : public testing::Test {
protected:
    X11WindowsTest() {
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "org.example.Console.desktop")
            << "[Desktop Entry]\nType=Application\nName=Console\nStartupWMClass=Konsolette\n"
               "Categories=System;TerminalEmulator;\n";
        std::ofstream(folder / "editor.desktop") << "[Desktop Entry]\nType=Application\nName=Editor\nExec=edit %U\n";
        entries = std::make_shared<DesktopEntries>(std::vector{folder}, "");
    }

    X11Windows windows() { return {own, entries}; }
    std::string idOf(XWindow window) { return applicationId(*x, window, *entries).value_or("none"); }

    const std::filesystem::path folder = std::filesystem::path(std::getenv("HOME")) / "applications";
    std::shared_ptr<const DesktopEntries> entries;
    XClient client;
    const X11Ewmh& ewmh = client.ewmh();
    std::unique_ptr<X11Connection> x = X11Connection::open();
    X11Ewmh own{*x};
};

TEST_F(X11WindowsTest, theTopmostWindowUnderThePointElseTheActiveOne) {
    const auto below = client.open({.frame = {100, 100, 300, 200}});
    const auto above = client.open({.frame = {250, 100, 300, 200}});
    const auto active = client.open({.frame = {700, 400, 200, 200}});
    auto targets = windows();
    const auto at = [&](Point p) { return targets.targetWindow(p)->frame(); };
    EXPECT_EQ(at({120, 200}), ewmh.frame(below));
    EXPECT_EQ(at({300, 200}), ewmh.frame(above));
    EXPECT_EQ(at({5, 700}), ewmh.frame(active));
    EXPECT_EQ(targets.targetWindow(std::nullopt)->frame(), ewmh.frame(active));
    // The title bar belongs to the window.
    const auto frame = *ewmh.frame(below);
    EXPECT_GT(frame.height, 200);
    EXPECT_EQ(at({frame.x + 20, frame.y + 2}), frame);

    ewmh.minimize(above);
    ASSERT_TRUE(eventually([&] { return ewmh.isMinimized(above); }));
    EXPECT_EQ(at({300, 200}), ewmh.frame(below));
    client.destroy(active);
    client.destroy(below);
    client.destroy(above);
    EXPECT_EQ(targets.targetWindow(Point{300, 200}), nullptr);
}

TEST_F(X11WindowsTest, panelsAndOtherDesktopsDoNotCount) {
    const auto window = client.open({.frame = {0, 0, 400, 400}});
    client.open({.frame = {0, 0, 400, 30}, .type = client.atoms().typeDock});
    client.open({.frame = {0, 0, 1280, 800}, .type = client.atoms().typeDesktop});
    auto targets = windows();
    EXPECT_EQ(targets.targetWindow(Point{200, 200})->frame(), ewmh.frame(window));
    EXPECT_EQ(targets.targetWindow(Point{200, 20})->frame(), ewmh.frame(window));
    ewmh.setCurrentDesktop(1);
    ASSERT_TRUE(eventually([&] { return ewmh.currentDesktop() == 1U && ewmh.activeWindow() != window; }));
    EXPECT_EQ(targets.targetWindow(Point{200, 200}), nullptr);
    ewmh.setCurrentDesktop(0);
    ASSERT_TRUE(eventually([&] { return ewmh.currentDesktop() == 0U; }));
}

TEST_F(X11WindowsTest, minimizeAndFullScreen) {
    const auto window = client.open();
    auto targets = windows();
    const auto target = targets.targetWindow(std::nullopt);
    EXPECT_EQ(target->isFullScreen(), false);
    EXPECT_EQ(target->setFullScreen(true), 0);
    EXPECT_TRUE(eventually([&] { return target->isFullScreen() == true; }));
    EXPECT_TRUE(eventually([&] { return target->frame() == Rect{0, 0, 1280, 800}; }));
    EXPECT_EQ(target->setFullScreen(false), 0);
    EXPECT_TRUE(eventually([&] { return target->isFullScreen() == false; }));
    EXPECT_THAT(target->describe(), MatchesRegex("\\[Tester\\] window=0x[0-9a-f]+ role=normal minimized=false "
                                                 "settable=true fullscreen=false"));
    EXPECT_EQ(target->minimize(), 0);
    EXPECT_TRUE(eventually([&] { return ewmh.isMinimized(window); }));
}

TEST_F(X11WindowsTest, aWindowThatVanishedAnswersWithErrors) {
    const auto window = client.open();
    auto targets = windows();
    const auto target = targets.targetWindow(std::nullopt);
    client.destroy(window);
    EXPECT_NE(target->minimize(), 0);
    EXPECT_NE(target->setFullScreen(true), 0);
    EXPECT_EQ(target->isFullScreen(), std::nullopt);
    EXPECT_EQ(target->frame(), std::nullopt);
    EXPECT_THAT(target->describe(), HasSubstr("gone"));
}

TEST_F(X11WindowsTest, identityFromTheApplicationsIdOrItsClass) {
    EXPECT_EQ(idOf(client.open({.instance = "console", .className = "konsolette"})), "org.example.Console");
    EXPECT_EQ(idOf(client.open({.instance = "edit", .className = "Whatever"})), "editor");
    EXPECT_EQ(idOf(client.open({.instance = "x", .className = "Unknown"})), "Unknown");
    EXPECT_EQ(idOf(client.open({.instance = "", .className = ""})), "none");
    const auto gtk = client.open({.instance = "x", .className = "Unknown"});
    client.setText(gtk, "_GTK_APPLICATION_ID", "org.example.Console");
    EXPECT_EQ(idOf(gtk), "org.example.Console");
    const auto kde = client.open({.instance = "x", .className = "Unknown"});
    client.setText(kde, "_KDE_NET_WM_DESKTOP_FILE", "editor.desktop");
    EXPECT_EQ(idOf(kde), "editor");
}

TEST_F(X11WindowsTest, hostileNamesAreCutAndCleaned) {
    const auto window = client.open({.instance = "a\nb", .className = std::string("Evil\x1b[31m\xff\n")});
    EXPECT_EQ(idOf(window), "Evil [31mÿ ");
    client.setText(window, "_GTK_APPLICATION_ID", std::string(1 << 20, 'x'));
    EXPECT_EQ(idOf(window), std::string(512, 'x'));
    EXPECT_EQ(windows().targetWindow(std::nullopt)->describe().find('\n'), std::string::npos);
}

TEST_F(X11WindowsTest, terminalsAreToldByTheirCategory) {
    X11Workspace workspace(own, entries);
    client.open({.instance = "console", .className = "Konsolette"});
    EXPECT_TRUE(workspace.frontmostIsTerminal());
    client.open({.instance = "edit", .className = "Edit"});
    EXPECT_FALSE(workspace.frontmostIsTerminal());
}

TEST_F(X11WindowsTest, aWindowManagerThatEndedOffersNothing) {
    const auto window = client.open();
    auto targets = windows();
    const auto target = targets.targetWindow(std::nullopt);
    // After a crash the root window still announces everything, but the window that vouches for it is gone.
    const auto setCheck = [this](XWindow value) {
        XChangeProperty(client.connection().display(), client.connection().root(), client.atoms().supportingWmCheck,
                        XA_WINDOW, 32, PropModeReplace, reinterpret_cast<const unsigned char*>(&value), 1);
        XSync(client.connection().display(), False);
    };
    const auto alive = readItem(*x, x->root(), client.atoms().supportingWmCheck, XA_WINDOW);
    setCheck(window);
    EXPECT_EQ(target->isFullScreen(), std::nullopt);
    EXPECT_NE(target->minimize(), 0);
    setCheck(alive.value());
    EXPECT_EQ(target->isFullScreen(), false);
}

} // namespace
} // namespace tarvik
