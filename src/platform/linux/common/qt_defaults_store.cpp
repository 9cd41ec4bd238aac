#include "platform/linux/common/qt_defaults_store.h"

#include <QByteArray>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>
#include <cmath>

namespace tarvik {
namespace {

QString toKey(std::string_view key) { return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())); }

/// The file holds text only; a list is a value that must not be taken for one.
std::optional<QString> single(const QVariant& value) {
    if (value.typeId() != QMetaType::QString && value.typeId() != QMetaType::QByteArray)
        return std::nullopt;
    return value.toString();
}

} // namespace

QString preferencesFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Tarvik.conf";
}

QtDefaultsStore::QtDefaultsStore(const QString& file, LogSink& log) : settings_(file, QSettings::IniFormat), log_(log) {
    if (settings_.status() != QSettings::NoError)
        log_.write("preferences cannot be read: " + file.toStdString());
}

std::optional<bool> QtDefaultsStore::boolean(std::string_view key) const {
    const auto text = single(settings_.value(toKey(key)));
    if (!text)
        return std::nullopt;
    if (text->compare("true", Qt::CaseInsensitive) == 0 || text->compare("yes", Qt::CaseInsensitive) == 0)
        return true;
    if (text->compare("false", Qt::CaseInsensitive) == 0 || text->compare("no", Qt::CaseInsensitive) == 0)
        return false;
    if (const auto value = number(key))
        return *value != 0;
    return std::nullopt;
}

std::optional<double> QtDefaultsStore::number(std::string_view key) const {
    const auto text = single(settings_.value(toKey(key)));
    bool ok = false;
    const double value = text ? text->toDouble(&ok) : 0;
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<std::string> QtDefaultsStore::text(std::string_view key) const {
    const auto text = single(settings_.value(toKey(key)));
    return text ? std::optional(text->toStdString()) : std::nullopt;
}

std::optional<std::vector<std::string>> QtDefaultsStore::textList(std::string_view key) const {
    const auto value = settings_.value(toKey(key));
    // A list of one is written like a text.
    if (!value.isValid() || !value.canConvert<QStringList>())
        return std::nullopt;
    std::vector<std::string> list;
    for (const auto& entry : value.toStringList())
        list.push_back(entry.toStdString());
    return list;
}

std::optional<std::string> QtDefaultsStore::data(std::string_view key) const {
    const auto value = settings_.value(toKey(key));
    if (!single(value))
        return std::nullopt;
    return value.toByteArray().toStdString();
}

void QtDefaultsStore::setBoolean(std::string_view key, bool value) { write(key, value); }
void QtDefaultsStore::setNumber(std::string_view key, double value) { write(key, value); }
void QtDefaultsStore::setText(std::string_view key, const std::string& value) {
    write(key, QString::fromStdString(value));
}

void QtDefaultsStore::setTextList(std::string_view key, const std::vector<std::string>& value) {
    QStringList list;
    for (const auto& entry : value)
        list.append(QString::fromStdString(entry));
    write(key, list);
}

void QtDefaultsStore::setData(std::string_view key, const std::string& value) {
    // As text: the file stays readable, and the table is text anyway.
    write(key, QString::fromStdString(value));
}

void QtDefaultsStore::write(std::string_view key, const QVariant& value) {
    settings_.setValue(toKey(key), value);
    settings_.sync();
    if (settings_.status() != QSettings::NoError)
        log_.write("preferences cannot be written: " + settings_.fileName().toStdString());
}

} // namespace tarvik
