// The applications in which gestures are off, and those that may join them.
#pragma once

#include "ports/applications.h"
#include "settings/settings.h"

#include <QAbstractListModel>
#include <QVariantList>

#include <string>
#include <vector>

namespace tarvik {

/// What the menu of running applications offers: ordinary applications that have an identifier and are not this
/// program, by name. One without a name stands where the empty name would; equal names keep the system's order.
std::vector<RunningApplication> applicationsToExclude(std::vector<RunningApplication> running,
                                                      const std::string& ownId);

/// One row for each stored identifier, in stored order. Main thread.
class ExcludedApps : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { appId = Qt::UserRole, name, installed };

    ExcludedApps(Settings& settings, Applications& applications);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override {
        return {{appId, "appId"}, {name, "name"}, {installed, "installed"}};
    }

    /// The menu's entries as they are now: maps with "appId" and "title".
    Q_INVOKABLE QVariantList running() const;
    /// An application that is excluded already stays where it is.
    Q_INVOKABLE void add(const QString& id);
    Q_INVOKABLE void remove(const QString& id);

private:
    struct Row {
        std::string id;
        QString name;
        bool installed = false;
        friend bool operator==(const Row&, const Row&) = default;
    };

    std::vector<Row> rows() const;

    Settings& settings_;
    Applications& applications_;
    std::vector<Row> rows_;
    Subscription subscription_;
};

} // namespace tarvik
