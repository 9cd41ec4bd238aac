#include "platform/linux/common/desktop_appearance.h"

#include "platform/linux/common/session_bus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>

#include <cmath>
#include <tuple>

namespace tarvik {
namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";
constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto gnomeInterface = "org.gnome.desktop.interface";
/// A portal that runs answers in a few milliseconds; the window does not wait longer than a person would notice.
constexpr int patience = 100;

using Settings = QMap<QString, QVariantMap>;

/// Three channels from 0 to 1; anything outside means that the user chose none.
std::optional<std::uint32_t> accentFrom(const QVariant& value) {
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)")
        return std::nullopt;
    double channels[3] = {};
    argument.beginStructure();
    argument >> channels[0] >> channels[1] >> channels[2];
    argument.endStructure();
    std::uint32_t rgb = 0;
    for (const auto channel : channels) {
        if (!(channel >= 0.0 && channel <= 1.0))
            return std::nullopt;
        rgb = rgb << 8 | static_cast<std::uint32_t>(std::lround(channel * 255));
    }
    return rgb;
}

} // namespace

Look DesktopAppearance::look() {
    if (!watching_)
        watch();
    const auto palette = QGuiApplication::palette();
    const auto paletteIsDark =
        palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    return {dark_.value_or(paletteIsDark),
            accent_.value_or(palette.color(QPalette::Active, QPalette::Highlight).rgb() & 0xFFFFFF),
            reducedMotion_.value_or(false) || noAnimations_};
}

void DesktopAppearance::watch() {
    watching_ = true;
    qApp->installEventFilter(this);
    if (!sessionBusHasAddress())
        return;
    auto bus = QDBusConnection::sessionBus();
    bus.connect(service, path, interface, "SettingChanged", this, SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask();
}

void DesktopAppearance::ask() {
    auto question = QDBusMessage::createMethodCall(service, path, interface, "ReadAll");
    question << QStringList{appearance, gnomeInterface};
    const auto takeAll = [this](const QDBusMessage& answer) {
        bool news = false;
        // The library reads a value of another type as if it were of this one.
        const auto all =
            answer.signature() == "a{sa{sv}}" ? qdbus_cast<Settings>(answer.arguments().first()) : Settings();
        for (auto space = all.begin(); space != all.end(); ++space) {
            for (auto entry = space->begin(); entry != space->end(); ++entry)
                news |= take(space.key(), entry.key(), entry.value());
        }
        return news;
    };

    question.setAutoStartService(false);
    const auto answer = QDBusConnection::sessionBus().call(question, QDBus::Block, patience);
    if (answer.type() == QDBusMessage::ReplyMessage) {
        takeAll(answer);
        return;
    }
    question.setAutoStartService(true);
    auto* later = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(later, &QDBusPendingCallWatcher::finished, this, [this, takeAll, later] {
        later->deleteLater();
        if (!later->isError() && takeAll(later->reply()))
            tell();
    });
}

void DesktopAppearance::settingChanged(const QString& space, const QString& key, const QDBusVariant& value) {
    if (take(space, key, value.variant()))
        tell();
}

bool DesktopAppearance::take(const QString& space, const QString& key, const QVariant& value) {
    const auto before = std::tuple(dark_, accent_, reducedMotion_, noAnimations_);
    if (space == appearance && key == "color-scheme") {
        // 0 is no preference, 1 dark, 2 light.
        const auto scheme = value.toUInt();
        dark_ = scheme == 1 || scheme == 2 ? std::optional(scheme == 1) : std::nullopt;
    } else if (space == appearance && key == "accent-color") {
        accent_ = accentFrom(value);
    } else if (space == appearance && key == "reduced-motion") {
        reducedMotion_ = value.toUInt() == 1;
    } else if (space == gnomeInterface && key == "enable-animations") {
        noAnimations_ = !value.toBool();
    }
    return before != std::tuple(dark_, accent_, reducedMotion_, noAnimations_);
}

bool DesktopAppearance::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver == qApp && event->type() == QEvent::ApplicationPaletteChange)
        tell();
    return false;
}

void DesktopAppearance::tell() {
    if (changed_)
        changed_();
}

} // namespace tarvik
