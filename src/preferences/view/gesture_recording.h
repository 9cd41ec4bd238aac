// Recording a new gesture by drawing it anywhere.
#pragma once

#include "ports/activation.h"
#include "services/gesture_recorder.h"
#include "settings/settings.h"

#include <QObject>
#include <QString>

namespace tarvik {

/// Lives as long as the window exists, shown or not: a gesture drawn after the window was closed is still recorded.
/// Main thread.
class GestureRecording : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool active READ active NOTIFY changed)
    /// The gesture recorded last; empty at first.
    Q_PROPERTY(QString highlighted READ highlighted NOTIFY changed)

public:
    GestureRecording(Settings& settings, GestureRecorder& recorder, Activation& activation)
        : settings_(settings), recorder_(recorder), activation_(activation) {}
    ~GestureRecording() override { cancel(); }

    bool active() const { return active_; }
    const QString& highlighted() const { return highlighted_; }

    Q_INVOKABLE void start();
    Q_INVOKABLE void cancel();

signals:
    void changed();
    /// After `highlighted` was set, also when it is the same gesture once more.
    void recorded();

private:
    void take(const std::string& directions);

    Settings& settings_;
    GestureRecorder& recorder_;
    Activation& activation_;
    bool active_ = false;
    QString highlighted_;
};

} // namespace tarvik
