#include "platform/linux/common/desktop_notice.h"

#include "platform/linux/common/session_bus.h"
#include "platform/linux/common/user_programs.h"

#include <QMessageBox>
#include <QPushButton>
#include <QUrl>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

namespace tarvik {
namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";
constexpr auto openLabel = "Show Details";

} // namespace

DesktopNotice::~DesktopNotice() { delete window_; }

void DesktopNotice::show(const QString& title, const QString& text, const QString& page, bool asked) {
    page_ = page.startsWith(QLatin1String("https://")) ? page : QString();
    if (!notify(title, text, asked) && asked)
        showWindow(title, text);
}

bool DesktopNotice::notify(const QString& title, const QString& text, bool asked) {
    if (!sessionBusHasAddress())
        return false;
    auto bus = QDBusConnection::sessionBus();
    if (!listening_)
        listening_ = bus.connect(service, path, service, QStringLiteral("ActionInvoked"), this,
                                 SLOT(actionInvoked(uint, QString)));
    QStringList actions;
    if (!page_.isEmpty())
        actions = {"default", openLabel, "open", openLabel};
    auto call = QDBusMessage::createMethodCall(service, path, service, "Notify");
    call.setArguments(
        {"Tarvik", id_, "tarvik", title, text.toHtmlEscaped(), actions, QVariantMap{{"desktop-entry", "tarvik"}}, -1});
    auto* const answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, title, text, asked] {
        const QDBusPendingReply<uint> reply = *answer;
        if (!reply.isError())
            id_ = reply.value();
        else if (asked)
            showWindow(title, text);
        answer->deleteLater();
    });
    return true;
}

void DesktopNotice::actionInvoked(uint id, const QString& action) {
    if (id == id_ && (action == QLatin1String("default") || action == QLatin1String("open")))
        openPage();
}

void DesktopNotice::showWindow(const QString& title, const QString& text) {
    delete window_;
    window_ = new QMessageBox(QMessageBox::Information, "Tarvik", text.isEmpty() ? title : title + "\n\n" + text);
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->setTextFormat(Qt::PlainText);
    if (!page_.isEmpty()) {
        const auto* const open = window_->addButton(openLabel, QMessageBox::AcceptRole);
        connect(open, &QPushButton::clicked, this, &DesktopNotice::openPage);
    }
    window_->addButton(QMessageBox::Close);
    window_->show();
}

void DesktopNotice::openPage() {
    if (!page_.isEmpty())
        openForUser(QUrl(page_, QUrl::StrictMode));
}

} // namespace tarvik
