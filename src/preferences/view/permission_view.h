// The permission, as the views bind to it.
#pragma once

#include "services/permissions.h"

#include <QObject>

namespace tarvik {

/// Main thread.
class PermissionView : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool trusted READ trusted NOTIFY changed)

public:
    explicit PermissionView(Permissions& permissions)
        : permissions_(permissions), subscription_(permissions.observe([this] { emit changed(); })) {}

    bool trusted() const { return permissions_.trusted(); }
    /// Asks, then shows the user where the permission is given.
    Q_INVOKABLE void grant() {
        permissions_.request();
        permissions_.openSettings();
    }

signals:
    void changed();

private:
    Permissions& permissions_;
    Subscription subscription_;
};

} // namespace tarvik
