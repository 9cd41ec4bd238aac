// What desktops are asked over the session bus, with services that stand for them.
#include "platform/linux/common/dbus_shell.h"

#include "fakes/recording_log.h"
#include "platform/support/eventually.h"
#include "platform/support/fake_bus_service.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtDBus/QDBusVariant>

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tarvik {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

QVariant property(bool value) { return QVariant::fromValue(QDBusVariant(value)); }

class DBusShellTest : public testing::Test {
protected:
    RecordingLog log;
    DBusShell shell{log};
};

TEST_F(DBusShellTest, nobodyThereIsRefused) {
    for (const auto kind : {ActionKind::missionControl, ActionKind::appExpose, ActionKind::launchpad, ActionKind::back})
        EXPECT_FALSE(shell.perform(kind));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(DBusShellTest, gnomeOpensAndClosesItsOverview) {
    FakeBusService gnome("org.gnome.Shell", {{"Get org.gnome.Shell OverviewActive", property(false)}});
    EXPECT_TRUE(shell.perform(ActionKind::missionControl));
    EXPECT_TRUE(shell.perform(ActionKind::appExpose));
    EXPECT_THAT(
        gnome.calls(),
        Contains("/org/gnome/Shell org.freedesktop.DBus.Properties.Set org.gnome.Shell OverviewActive true").Times(2));
    EXPECT_TRUE(shell.perform(ActionKind::launchpad));
    EXPECT_EQ(gnome.calls().back(), "/org/gnome/Shell org.gnome.Shell.ShowApplications");
    EXPECT_THAT(log.lines(), ElementsAre("org.gnome.Shell OverviewActive", "org.gnome.Shell OverviewActive",
                                         "org.gnome.Shell ShowApplications"));
}

TEST_F(DBusShellTest, gnomeThatKeepsItsLauncherToItselfShowsItsOverview) {
    FakeBusService gnome("org.gnome.Shell",
                         {{"ShowApplications", QVariant()}, {"Get org.gnome.Shell OverviewActive", property(true)}});
    EXPECT_TRUE(shell.perform(ActionKind::launchpad));
    EXPECT_EQ(gnome.calls().back(),
              "/org/gnome/Shell org.freedesktop.DBus.Properties.Set org.gnome.Shell OverviewActive false");
}

TEST_F(DBusShellTest, kdeThroughTheShortcutsOfItsWindowManager) {
    FakeBusService kwin("org.kde.KWin", {});
    FakeBusService accelerators("org.kde.kglobalaccel", {{"shortcutNames", QStringList{"Overview", "ExposeClass"}}});
    FakeBusService plasma("org.kde.plasmashell", {});
    const std::string invoke = "/component/kwin org.kde.kglobalaccel.Component.invokeShortcut ";
    EXPECT_TRUE(shell.perform(ActionKind::missionControl));
    EXPECT_EQ(accelerators.calls().back(), invoke + "Overview");
    EXPECT_TRUE(shell.perform(ActionKind::appExpose));
    EXPECT_EQ(accelerators.calls().back(), invoke + "ExposeClass");
    EXPECT_TRUE(shell.perform(ActionKind::launchpad));
    EXPECT_THAT(plasma.calls(), ElementsAre("/PlasmaShell org.kde.PlasmaShell.activateLauncherMenu"));
}

TEST_F(DBusShellTest, kdeWithoutAnOverviewShowsItsWindows) {
    FakeBusService kwin("org.kde.KWin", {});
    FakeBusService accelerators("org.kde.kglobalaccel", {{"shortcutNames", QStringList{"ExposeAll"}}});
    EXPECT_TRUE(shell.perform(ActionKind::missionControl));
    EXPECT_EQ(accelerators.calls().back(), "/component/kwin org.kde.kglobalaccel.Component.invokeShortcut ExposeAll");
    EXPECT_FALSE(shell.perform(ActionKind::appExpose));
}

TEST_F(DBusShellTest, shortcutsLeftFromAnotherSessionDoNotCount) {
    FakeBusService accelerators("org.kde.kglobalaccel", {{"shortcutNames", QStringList{"Overview"}}});
    EXPECT_FALSE(shell.perform(ActionKind::missionControl));
    EXPECT_THAT(accelerators.calls(), IsEmpty());
}

TEST_F(DBusShellTest, cinnamonOpensItsOverview) {
    FakeBusService cinnamon("org.Cinnamon", {{"Get org.Cinnamon OverviewActive", property(false)}});
    EXPECT_TRUE(shell.perform(ActionKind::missionControl));
    EXPECT_EQ(cinnamon.calls().back(),
              "/org/Cinnamon org.freedesktop.DBus.Properties.Set org.Cinnamon OverviewActive true");
    EXPECT_FALSE(shell.perform(ActionKind::launchpad));
}

TEST_F(DBusShellTest, xfceOpensTheMenuThatThePanelHas) {
    FakeBusService panel("org.xfce.Panel", {{"PluginEvent whiskermenu popup false", false}, {"PluginEvent", true}});
    EXPECT_TRUE(shell.perform(ActionKind::launchpad));
    EXPECT_THAT(panel.calls(), ElementsAre("/org/xfce/Panel org.xfce.Panel.PluginEvent whiskermenu popup false",
                                           "/org/xfce/Panel org.xfce.Panel.PluginEvent applicationsmenu popup false"));
}

TEST_F(DBusShellTest, xfceWithoutAMenuStartsItsFinder) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(std::getenv("HOME")) / "bin";
    const auto program = folder / "xfce4-appfinder";
    fs::create_directories(folder);
    std::ofstream(program) << "#!/bin/sh\n: > \"$HOME/finder-started\"\n";
    fs::permissions(program, fs::perms::owner_all);
    setenv("PATH", (folder.string() + ":" + std::getenv("PATH")).c_str(), 1);
    FakeBusService panel("org.xfce.Panel", {{"PluginEvent", false}});
    EXPECT_TRUE(shell.perform(ActionKind::launchpad));
    EXPECT_TRUE(eventually([] { return fs::exists(fs::path(std::getenv("HOME")) / "finder-started"); }));
}

TEST_F(DBusShellTest, aDesktopThatDoesNotAnswerIsGivenASecond) {
    FakeBusService gnome("org.gnome.Shell", {{"Get", "never"}});
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(shell.perform(ActionKind::missionControl));
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_THAT(waited, AllOf(testing::Gt(std::chrono::milliseconds(900)), testing::Lt(std::chrono::seconds(3))));
    EXPECT_THAT(log.lines(), ElementsAre("org.gnome.Shell OverviewActive: no answer"));
}

TEST_F(DBusShellTest, withoutASessionBusNothingIsOffered) {
    const std::string address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    EXPECT_FALSE(shell.perform(ActionKind::missionControl));
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    FakeBusService gnome("org.gnome.Shell", {{"Get", property(false)}});
    EXPECT_TRUE(shell.perform(ActionKind::missionControl)) << "the bus is there again";
}

} // namespace
} // namespace tarvik

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
