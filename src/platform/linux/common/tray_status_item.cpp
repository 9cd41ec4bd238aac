#include "platform/linux/common/tray_status_item.h"

#include "platform/linux/common/session_bus.h"
#include "platform/linux/common/status_symbol.h"

#include <QAction>
#include <QCursor>
#include <QTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusServiceWatcher>

#include <algorithm>
#include <chrono>

namespace tarvik {
namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
/// A panel that has both kinds of tray needs a moment between them.
constexpr auto grace = std::chrono::seconds(2);

/// An action that shows the item; what it does is looked up when it is chosen.
void dress(QAction& action, const MenuItem& item) {
    action.setSeparator(item.isSeparator());
    action.setText(QString::fromStdString(item.title).replace('&', QLatin1String("&&")));
    action.setEnabled(item.enabled);
    action.setCheckable(item.checked.has_value());
    action.setChecked(item.checked.value_or(false));
    action.setShortcut(item.keyEquivalent
                           ? QKeySequence(Qt::CTRL | Qt::Key(QChar(item.keyEquivalent).toUpper().unicode()))
                           : QKeySequence());
    action.disconnect(&action);
    if (item.action)
        QObject::connect(&action, &QAction::triggered, &action, [act = item.action] { act(); });
}

} // namespace

TrayStatusItem::TrayStatusItem(std::function<bool()> darkPanel) : darkPanel_(std::move(darkPanel)) {
    connect(&menu_, &QMenu::aboutToShow, this, [this] { refresh(menu_); });
    if (!sessionBusHasAddress())
        return;
    auto bus = QDBusConnection::sessionBus();
    auto* const watcher = new QDBusServiceWatcher(watcherName, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayStatusItem::askForHost);
    bus.connect(watcherName, watcherPath, watcherName, QStringLiteral("StatusNotifierHostRegistered"), this,
                SLOT(askForHost()));
    askForHost();
}

void TrayStatusItem::askForHost() {
    if (tray_)
        return;
    auto question = QDBusMessage::createMethodCall(watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get");
    question.setArguments({watcherName, "IsStatusNotifierHostRegistered"});
    question.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QVariant> reply = *answer;
        if (!reply.isError() && reply.value().toBool())
            show();
        answer->deleteLater();
    });
}

void TrayStatusItem::olderTrayCame() { QTimer::singleShot(grace, this, &TrayStatusItem::show); }

void TrayStatusItem::show() {
    if (tray_)
        return;
    tray_ = std::make_unique<QSystemTrayIcon>();
    tray_->setIcon(symbolIcon(icon_, darkPanel_() ? Qt::white : Qt::black));
    tray_->setToolTip(description_);
    tray_->setContextMenu(&menu_);
    connect(tray_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason != QSystemTrayIcon::Trigger)
            return;
        refresh(popup_);
        popup_.popup(QCursor::pos());
    });
    tray_->show();
}

void TrayStatusItem::setIcon(StatusIcon icon, std::string_view description, bool) {
    icon_ = icon;
    description_ = QString::fromUtf8(description.data(), static_cast<qsizetype>(description.size()));
    if (tray_) {
        tray_->setIcon(symbolIcon(icon_, darkPanel_() ? Qt::white : Qt::black));
        tray_->setToolTip(description_);
    }
    // Some panels keep what they have read of the menu until it changes.
    QTimer::singleShot(0, this, [this] { refresh(menu_); });
}

void TrayStatusItem::setMenu(std::function<std::vector<MenuItem>()> build) {
    build_ = std::move(build);
    refresh(menu_);
}

/// Items that stay keep their identity: a panel that has the menu open may choose one by it.
void TrayStatusItem::refresh(QMenu& menu) {
    const auto items = build_ ? build_() : std::vector<MenuItem>();
    auto actions = menu.actions();
    const bool same = std::equal(
        items.begin(), items.end(), actions.begin(), actions.end(),
        [](const MenuItem& item, const QAction* action) { return item.isSeparator() == action->isSeparator(); });
    if (!same) {
        menu.clear();
        actions.clear();
        for (std::size_t i = 0; i < items.size(); ++i)
            actions.append(menu.addAction(QString()));
    }
    for (std::size_t i = 0; i < items.size(); ++i)
        dress(*actions[static_cast<qsizetype>(i)], items[i]);
}

} // namespace tarvik
