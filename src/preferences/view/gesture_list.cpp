#include "preferences/view/gesture_list.h"

#include <algorithm>

namespace tarvik {
namespace {

bool isBefore(const std::string& a, const std::string& b) { return a.size() != b.size() ? a.size() < b.size() : a < b; }

} // namespace

std::vector<std::pair<std::string, GestureAction>> sortedGestures(const GestureTable& table) {
    std::vector<std::pair<std::string, GestureAction>> rows(table.begin(), table.end());
    std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return isBefore(a.first, b.first); });
    return rows;
}

GestureList::GestureList(Settings& settings, const KeyNames& keyNames)
    : settings_(settings)
    , keyNames_(keyNames)
    , rows_(sortedGestures(settings.mappings()))
    , subscription_(settings.observe([this](Setting setting) {
        if (setting == Setting::mappings)
            follow();
    })) {}

int GestureList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant GestureList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& [directions, action] = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case gesture:
        return QString::fromStdString(directions);
    case arrows:
        return QString::fromStdString(Gesture::arrows(directions));
    case kind:
        return static_cast<int>(action.kind);
    case hasShortcut:
        return action.custom.has_value();
    case shortcut:
        return action.custom ? QString::fromStdString(keyNames_.displayString(*action.custom)) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> GestureList::roleNames() const {
    return {
        {gesture, "gesture"}, {arrows, "arrows"}, {kind, "kind"}, {hasShortcut, "hasShortcut"}, {shortcut, "shortcut"}};
}

int GestureList::rowOf(const QString& gesture) const {
    const auto row = std::find_if(rows_.begin(), rows_.end(), [key = gesture.toStdString()](const Row& candidate) {
        return candidate.first == key;
    });
    return row == rows_.end() ? -1 : static_cast<int>(row - rows_.begin());
}

void GestureList::setKind(const QString& gesture, int kind) {
    edit(gesture, [kind](GestureAction& action) { action.kind = static_cast<ActionKind>(kind); });
}

void GestureList::setShortcut(const QString& gesture, const KeyShortcut& shortcut) {
    edit(gesture, [&shortcut](GestureAction& action) { action.custom = shortcut; });
}

void GestureList::remove(const QString& gesture) {
    auto table = settings_.mappings();
    table.erase(gesture.toStdString());
    settings_.setMappings(std::move(table));
}

void GestureList::resetToDefaults() { settings_.setMappings(defaultMappings()); }

void GestureList::edit(const QString& gesture, const std::function<void(GestureAction&)>& change) {
    auto table = settings_.mappings();
    change(table[gesture.toStdString()]);
    settings_.setMappings(std::move(table));
}

/// Both lists are in the same order, so one walk finds what went, what came and what changed.
void GestureList::follow() {
    const auto wanted = sortedGestures(settings_.mappings());
    std::size_t at = 0;
    for (const auto& row : wanted) {
        while (at < rows_.size() && isBefore(rows_[at].first, row.first)) {
            const auto index = static_cast<int>(at);
            beginRemoveRows({}, index, index);
            rows_.erase(rows_.begin() + index);
            endRemoveRows();
        }
        const auto index = static_cast<int>(at);
        if (at == rows_.size() || rows_[at].first != row.first) {
            beginInsertRows({}, index, index);
            rows_.insert(rows_.begin() + index, row);
            endInsertRows();
        } else if (rows_[at] != row) {
            rows_[at] = row;
            emit dataChanged(createIndex(index, 0), createIndex(index, 0));
        }
        ++at;
    }
    if (at < rows_.size()) {
        beginRemoveRows({}, static_cast<int>(at), static_cast<int>(rows_.size()) - 1);
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(at), rows_.end());
        endRemoveRows();
    }
}

} // namespace tarvik
