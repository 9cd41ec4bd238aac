#include "preferences/view/excluded_apps.h"

#include <QVariantMap>

#include <algorithm>

namespace tarvik {

std::vector<RunningApplication> applicationsToExclude(std::vector<RunningApplication> running,
                                                      const std::string& ownId) {
    std::erase_if(running, [&ownId](const RunningApplication& application) {
        return !application.regular || !application.id || *application.id == ownId;
    });
    std::stable_sort(running.begin(), running.end(), [](const RunningApplication& a, const RunningApplication& b) {
        return a.name.value_or("") < b.name.value_or("");
    });
    return running;
}

ExcludedApps::ExcludedApps(Settings& settings, Applications& applications)
    : settings_(settings)
    , applications_(applications)
    , rows_(rows())
    , subscription_(settings.observe([this](Setting setting) {
        if (setting != Setting::excludedApps)
            return;
        beginResetModel();
        rows_ = rows();
        endResetModel();
    })) {}

std::vector<ExcludedApps::Row> ExcludedApps::rows() const {
    std::vector<Row> rows;
    for (const auto& id : settings_.excludedApps()) {
        const auto application = applications_.installed(id, 0);
        rows.push_back({id, QString::fromStdString(application ? application->name : id), application.has_value()});
    }
    return rows;
}

int ExcludedApps::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ExcludedApps::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case appId:
        return QString::fromStdString(row.id);
    case name:
        return row.name;
    case installed:
        return row.installed;
    default:
        return {};
    }
}

QVariantList ExcludedApps::running() const {
    QVariantList entries;
    for (const auto& application : applicationsToExclude(applications_.running(), applications_.ownId())) {
        const auto id = QString::fromStdString(*application.id);
        entries.push_back(
            QVariantMap{{"appId", id}, {"title", application.name ? QString::fromStdString(*application.name) : id}});
    }
    return entries;
}

void ExcludedApps::add(const QString& id) {
    auto ids = settings_.excludedApps();
    if (std::find(ids.begin(), ids.end(), id.toStdString()) != ids.end())
        return;
    ids.push_back(id.toStdString());
    settings_.setExcludedApps(std::move(ids));
}

void ExcludedApps::remove(const QString& id) {
    auto ids = settings_.excludedApps();
    std::erase(ids, id.toStdString());
    settings_.setExcludedApps(std::move(ids));
}

} // namespace tarvik
