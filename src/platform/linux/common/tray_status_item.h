// The status item in the desktop's tray.
#pragma once

#include "ports/status_item.h"

#include <QMenu>
#include <QObject>
#include <QString>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>

namespace tarvik {

/// A StatusNotifierItem where the desktop has a host for one, else an icon in a tray of the older kind. The toolkit
/// decides once, when its tray icon is made, which of the two it will be for ever; so none is made before there is a
/// tray. A session often starts this program before its panel, and some desktops have no tray at all. Main thread;
/// needs a QApplication.
class TrayStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    /// `darkPanel` is asked for the colour of the symbols where the panel does not choose one.
    explicit TrayStatusItem(std::function<bool()> darkPanel);

    void setIcon(StatusIcon icon, std::string_view description, bool appearsDisabled) override;
    void setMenu(std::function<std::vector<MenuItem>()> build) override;

    /// There is a tray of the older kind. It is used when no host of the other kind comes right after it.
    void olderTrayCame();

private slots:
    void askForHost();

private:
    void show();
    void refresh(QMenu& menu);

    const std::function<bool()> darkPanel_;
    std::function<std::vector<MenuItem>()> build_;
    StatusIcon icon_ = StatusIcon::handRaisedSlash;
    QString description_;
    /// What the panel shows; where a panel reports the click instead, the program shows `popup_` itself.
    QMenu menu_;
    QMenu popup_;
    std::unique_ptr<QSystemTrayIcon> tray_;
};

} // namespace tarvik
