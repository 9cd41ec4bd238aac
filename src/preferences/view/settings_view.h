// The settings of the General tab, as the views bind to them.
#pragma once

#include "settings/settings.h"

#include <QObject>
#include <QString>

namespace tarvik {

/// Reads and writes Settings; keeps nothing. Main thread.
class SettingsView : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY changed)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY changed)
    /// In the order of the enumeration.
    Q_PROPERTY(int triggerButton READ triggerButton WRITE setTriggerButton NOTIFY changed)
    Q_PROPERTY(bool showTrail READ showTrail WRITE setShowTrail NOTIFY changed)
    Q_PROPERTY(double minStroke READ minStroke WRITE setMinStroke NOTIFY changed)
    /// In the order of the enumeration.
    Q_PROPERTY(int scrollBinding READ scrollBinding WRITE setScrollBinding NOTIFY changed)
    Q_PROPERTY(bool reverseVertical READ reverseVertical WRITE setReverseVertical NOTIFY changed)
    Q_PROPERTY(bool reverseHorizontal READ reverseHorizontal WRITE setReverseHorizontal NOTIFY changed)
    /// Milliseconds; 0 for never.
    Q_PROPERTY(int dragDelay READ dragDelay WRITE setDragDelay NOTIFY changed)
    Q_PROPERTY(QString storageProblem READ storageProblem NOTIFY changed)

public:
    explicit SettingsView(Settings& settings)
        : settings_(settings), subscription_(settings.observe([this](auto) { emit changed(); })) {}

    bool enabled() const { return settings_.enabled(); }
    void setEnabled(bool on) { settings_.setEnabled(on); }
    bool launchAtLogin() const { return settings_.launchAtLogin(); }
    void setLaunchAtLogin(bool on) { settings_.setLaunchAtLogin(on); }
    int triggerButton() const { return static_cast<int>(settings_.triggerButton()); }
    void setTriggerButton(int button) { settings_.setTriggerButton(static_cast<TriggerButton>(button)); }
    bool showTrail() const { return settings_.showTrail(); }
    void setShowTrail(bool on) { settings_.setShowTrail(on); }
    double minStroke() const { return settings_.minStroke(); }
    void setMinStroke(double points) { settings_.setMinStroke(points); }
    int scrollBinding() const { return static_cast<int>(settings_.scrollBinding()); }
    void setScrollBinding(int binding) { settings_.setScrollBinding(static_cast<ScrollBinding>(binding)); }
    bool reverseVertical() const { return settings_.reverseVertical(); }
    void setReverseVertical(bool on) { settings_.setReverseVertical(on); }
    bool reverseHorizontal() const { return settings_.reverseHorizontal(); }
    void setReverseHorizontal(bool on) { settings_.setReverseHorizontal(on); }
    int dragDelay() const { return static_cast<int>(settings_.dragDelay().count()); }
    void setDragDelay(int milliseconds) { settings_.setDragDelay(milliseconds); }
    QString storageProblem() const { return QString::fromStdString(settings_.storageProblem()); }

signals:
    /// Also when a change was refused: a control that the user moved must move back.
    void changed();

private:
    Settings& settings_;
    Subscription subscription_;
};

} // namespace tarvik
