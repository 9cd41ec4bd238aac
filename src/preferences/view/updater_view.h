// Updates, as the About tab binds to them.
#pragma once

#include "services/updater.h"

#include <QLocale>
#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

namespace tarvik {

/// The abbreviated date and the short time of the locale, in local time: "Nov 23, 2026, 4:05 PM". "Never" for none.
QString lastCheckedText(std::optional<std::chrono::system_clock::time_point> date, const QLocale& locale);

/// Main thread.
class UpdaterView : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool automatic READ automatic WRITE setAutomatic NOTIFY changed)
    Q_PROPERTY(QString lastChecked READ lastChecked NOTIFY changed)
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)

public:
    explicit UpdaterView(Updater& updater)
        : updater_(updater), subscription_(updater.observe([this] { emit changed(); })) {}

    bool automatic() const { return updater_.automaticallyChecksForUpdates(); }
    void setAutomatic(bool on) { updater_.setAutomaticallyChecksForUpdates(on); }
    QString lastChecked() const { return lastCheckedText(updater_.lastUpdateCheckDate(), QLocale()); }
    QString outcome() const { return QString::fromStdString(updater_.outcome()); }
    Q_INVOKABLE void check() { updater_.checkForUpdates(); }

signals:
    void changed();

private:
    Updater& updater_;
    Subscription subscription_;
};

} // namespace tarvik
