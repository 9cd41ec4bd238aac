// Telling the user something outside of the program's windows, gently.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtDBus/QDBusMessage>

class QMessageBox;

namespace tarvik {

/// A notification of the desktop (Desktop Notifications Specification 1.2). A later notice takes the place of an
/// earlier one. Main thread.
class DesktopNotice final : public QObject {
    Q_OBJECT

public:
    ~DesktopNotice() override;

    /// `page` is what the notice offers to open, a web page over HTTPS; empty for nothing. `asked`: the user waits for
    /// this; a desktop without notifications then gets a small window.
    void show(const QString& title, const QString& text, const QString& page, bool asked);

private slots:
    void actionInvoked(uint id, const QString& action);

private:
    bool notify(const QString& title, const QString& text, bool asked);
    void showWindow(const QString& title, const QString& text);
    void openPage();

    bool listening_ = false;
    uint id_ = 0;
    QString page_;
    QPointer<QMessageBox> window_;
};

} // namespace tarvik
