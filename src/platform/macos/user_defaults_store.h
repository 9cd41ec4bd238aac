// Preferences in the user defaults of the application's domain.
#pragma once

#include "ports/defaults_store.h"
#include "support/log.h"

namespace tarvik {

/// What a setter is given is with the system's preferences service when it returns. A value of another type is
/// converted as the system does it, where it does it sensibly: `defaults write` without a type makes a text of a
/// number.
class UserDefaultsStore final : public DefaultsStore {
public:
    explicit UserDefaultsStore(LogSink& log) : log_(log) {}

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

    /// Under the key with ".unreadable" behind it, and a number when that is taken.
    bool setAside(std::string_view key) override;

private:
    LogSink& log_;
};

} // namespace tarvik
