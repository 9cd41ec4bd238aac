// The gesture table as the list that people see and edit.
#pragma once

#include "model/key_names.h"
#include "settings/settings.h"

#include <QAbstractListModel>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// Short gestures first, equal lengths in plain string order.
std::vector<std::pair<std::string, GestureAction>> sortedGestures(const GestureTable& table);

/// One row for each gesture. Every edit replaces the table in Settings; the rows follow Settings row by row, so that
/// what the user has open in an untouched row stays open. Main thread.
class GestureList : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { gesture = Qt::UserRole, arrows, kind, hasShortcut, shortcut };

    GestureList(Settings& settings, const KeyNames& keyNames);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// -1 when there is no such gesture.
    Q_INVOKABLE int rowOf(const QString& gesture) const;
    /// Keeps a recorded shortcut.
    Q_INVOKABLE void setKind(const QString& gesture, int kind);
    Q_INVOKABLE void remove(const QString& gesture);
    Q_INVOKABLE void resetToDefaults();
    void setShortcut(const QString& gesture, const KeyShortcut& shortcut);

private:
    using Row = std::pair<std::string, GestureAction>;

    void follow();
    void edit(const QString& gesture, const std::function<void(GestureAction&)>& change);

    Settings& settings_;
    const KeyNames& keyNames_;
    std::vector<Row> rows_;
    Subscription subscription_;
};

} // namespace tarvik
