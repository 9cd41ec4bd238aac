// The entries of the action picker.
#pragma once

#include "model/vocabulary.h"

#include <QAbstractListModel>

namespace tarvik {

/// Every kind of action in declaration order, which is the order of the sections too. The row is the kind's number.
class ActionChoices : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { title = Qt::DisplayRole, section = Qt::UserRole };

    explicit ActionChoices(const Vocabulary& vocabulary) : vocabulary_(vocabulary) {}

    /// The kind that shows a shortcut beside it.
    Q_INVOKABLE int custom() const { return static_cast<int>(ActionKind::custom); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override { return {{title, "title"}, {section, "section"}}; }

private:
    const Vocabulary& vocabulary_;
};

} // namespace tarvik
