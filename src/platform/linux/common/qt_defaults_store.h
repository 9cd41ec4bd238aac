// The preferences in one INI file, through the toolkit's settings class.
#pragma once

#include "ports/defaults_store.h"
#include "support/log.h"

#include <QSettings>
#include <QString>

namespace tarvik {

/// "Tarvik.conf" in the user's configuration folder. Each write replaces the file atomically before it returns; one
/// that fails is logged and kept in memory.
class QtDefaultsStore final : public DefaultsStore {
public:
    QtDefaultsStore(const QString& file, LogSink& log);

    std::optional<bool> boolean(std::string_view key) const override;
    std::optional<double> number(std::string_view key) const override;
    std::optional<std::string> text(std::string_view key) const override;
    std::optional<std::vector<std::string>> textList(std::string_view key) const override;
    std::optional<std::string> data(std::string_view key) const override;

    void setBoolean(std::string_view key, bool value) override;
    void setNumber(std::string_view key, double value) override;
    void setText(std::string_view key, const std::string& value) override;
    void setTextList(std::string_view key, const std::vector<std::string>& value) override;
    void setData(std::string_view key, const std::string& value) override;

private:
    void write(std::string_view key, const QVariant& value);

    QSettings settings_;
    LogSink& log_;
};

/// The file of the user's preferences.
QString preferencesFile();

} // namespace tarvik
