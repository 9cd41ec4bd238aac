// Recording a key combination by typing it.
#pragma once

#include "ports/key_monitor.h"
#include "preferences/view/gesture_list.h"

#include <QObject>
#include <QString>

namespace tarvik {

/// One capture at a time: starting another one ends the first. Main thread.
class ShortcutCapture : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool active READ active NOTIFY changed)
    /// The gesture whose shortcut is being typed.
    Q_PROPERTY(QString gesture READ gesture NOTIFY changed)
    /// The last key has no place in a shortcut; the capture waits for another one.
    Q_PROPERTY(bool refused READ refused NOTIFY changed)

public:
    ShortcutCapture(GestureList& gestures, KeyMonitor& monitor) : gestures_(gestures), monitor_(monitor) {}
    ~ShortcutCapture() override { stop(); }

    bool active() const { return active_; }
    const QString& gesture() const { return gesture_; }
    bool refused() const { return refused_; }

    Q_INVOKABLE void start(const QString& gesture);
    Q_INVOKABLE void stop();

signals:
    void changed();

private:
    void take(const TypedKey& key);

    GestureList& gestures_;
    KeyMonitor& monitor_;
    bool active_ = false;
    QString gesture_;
    bool refused_ = false;
};

} // namespace tarvik
