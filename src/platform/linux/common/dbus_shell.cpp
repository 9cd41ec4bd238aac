#include "platform/linux/common/dbus_shell.h"

#include "platform/linux/common/session_bus.h"
#include "platform/linux/common/user_programs.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtDBus/QDBusVariant>

#include <string>

namespace tarvik {
namespace {

using Outcome = BusReply::Outcome;

constexpr BusObject kwin = {"org.kde.kglobalaccel", "/component/kwin", "org.kde.kglobalaccel.Component"};
constexpr BusObject plasma = {"org.kde.plasmashell", "/PlasmaShell", "org.kde.PlasmaShell"};
constexpr BusObject gnomeShell = {"org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell"};
constexpr BusObject cinnamon = {"org.Cinnamon", "/org/Cinnamon", "org.Cinnamon"};
constexpr BusObject xfcePanel = {"org.xfce.Panel", "/org/xfce/Panel", "org.xfce.Panel"};

Outcome callMethod(SessionBus& bus, const BusObject& object, const char* method) {
    return bus.call(object, method).outcome;
}

/// A shortcut that the window manager registered; it works whatever keys the user gave it. Unknown ones would be
/// answered like known ones.
Outcome invokeShortcut(SessionBus& bus, const BusObject& object, const char* shortcut) {
    const auto name = QString::fromLatin1(shortcut);
    const auto known = bus.call(object, "shortcutNames");
    if (known.outcome == Outcome::answered && !known.value.toStringList().contains(name))
        return Outcome::refused;
    return known.outcome == Outcome::answered ? bus.call(object, "invokeShortcut", {name}).outcome : known.outcome;
}

/// A Boolean that says whether the view is open.
Outcome toggle(SessionBus& bus, const BusObject& object, const char* property) {
    const auto open = bus.property(object, property);
    if (open.outcome != Outcome::answered || open.value.typeId() != QMetaType::Bool)
        return open.outcome == Outcome::silent ? Outcome::silent : Outcome::refused;
    return bus.setProperty(object, property, !open.value.toBool()).outcome;
}

/// Opens the menu of a plug-in of the panel; the answer tells whether the panel has that plug-in.
Outcome openMenu(SessionBus& bus, const BusObject& object, const char* plugin) {
    const bool atPointer = false;
    const auto reply =
        bus.call(object, "PluginEvent",
                 {QString::fromLatin1(plugin), QStringLiteral("popup"), QVariant::fromValue(QDBusVariant(atPointer))});
    return reply.outcome == Outcome::answered && !reply.value.toBool() ? Outcome::refused : reply.outcome;
}

Outcome start(SessionBus&, const BusObject&, const char* program) {
    return startUserProgram(QString::fromLatin1(program)) ? Outcome::answered : Outcome::refused;
}

/// One way of doing one action.
struct Way {
    ActionKind kind;
    /// Who runs on this desktop and on no other.
    const char* desktop;
    const BusObject& object;
    Outcome (*take)(SessionBus&, const BusObject&, const char*);
    const char* member;
};

/// In the order in which they are tried. A desktop without a view of one application's windows shows its overview
/// instead; so does a GNOME Shell that keeps its launcher to its own programs (41 and later).
constexpr Way ways[] = {
    {ActionKind::missionControl, "org.kde.KWin", kwin, invokeShortcut, "Overview"},
    {ActionKind::missionControl, "org.kde.KWin", kwin, invokeShortcut, "ExposeAll"},
    {ActionKind::missionControl, "org.gnome.Shell", gnomeShell, toggle, "OverviewActive"},
    {ActionKind::missionControl, "org.Cinnamon", cinnamon, toggle, "OverviewActive"},
    {ActionKind::appExpose, "org.kde.KWin", kwin, invokeShortcut, "ExposeClass"},
    {ActionKind::appExpose, "org.kde.KWin", kwin, invokeShortcut, "Overview"},
    {ActionKind::appExpose, "org.gnome.Shell", gnomeShell, toggle, "OverviewActive"},
    {ActionKind::appExpose, "org.Cinnamon", cinnamon, toggle, "OverviewActive"},
    {ActionKind::launchpad, "org.kde.plasmashell", plasma, callMethod, "activateLauncherMenu"},
    {ActionKind::launchpad, "org.gnome.Shell", gnomeShell, callMethod, "ShowApplications"},
    {ActionKind::launchpad, "org.gnome.Shell", gnomeShell, toggle, "OverviewActive"},
    {ActionKind::launchpad, "org.xfce.Panel", xfcePanel, openMenu, "whiskermenu"},
    {ActionKind::launchpad, "org.xfce.Panel", xfcePanel, openMenu, "applicationsmenu"},
    {ActionKind::launchpad, "org.xfce.Panel", xfcePanel, start, "xfce4-appfinder"},
};

} // namespace

DBusShell::DBusShell(LogSink& log) : log_(log), bus_(std::make_unique<SessionBus>()) {}

DBusShell::~DBusShell() = default;

bool DBusShell::perform(ActionKind kind) {
    for (const auto& way : ways) {
        if (way.kind != kind || !bus_->runs(way.desktop))
            continue;
        const auto outcome = way.take(*bus_, way.object, way.member);
        if (outcome == Outcome::refused)
            continue;
        log_.write(std::string(way.desktop) + " " + way.member + (outcome == Outcome::silent ? ": no answer" : ""));
        return true;
    }
    return false;
}

} // namespace tarvik
