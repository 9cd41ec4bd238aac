// The preferences in one INI file that people edit, too.
#pragma once

#include "platform/linux/common/ini_text.h"
#include "ports/defaults_store.h"
#include "support/log.h"

#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <utility>

namespace tarvik {

/// Reads the file once. Each write changes the line of its key in the file as it is then, so that comments, unknown
/// keys and what another program has changed meanwhile are kept. One that fails is logged, kept in memory, and tried
/// again with the next. A file that cannot be read is never written.
class IniDefaultsStore final : public DefaultsStore {
public:
    IniDefaultsStore(std::filesystem::path file, LogSink& log);

    /// "true", "yes", "false" and "no" in any case, and numbers, of which all but 0 are true.
    std::optional<bool> boolean(std::string_view key) const override;
    /// Finite ones.
    std::optional<double> number(std::string_view key) const override;
    std::optional<std::string> text(std::string_view key) const override;
    std::optional<std::vector<std::string>> textList(std::string_view key) const override;
    std::optional<std::string> data(std::string_view key) const override { return text(key); }

    void setBoolean(std::string_view key, bool value) override;
    void setNumber(std::string_view key, double value) override;
    void setText(std::string_view key, const std::string& value) override;
    void setTextList(std::string_view key, const std::vector<std::string>& value) override;
    void setData(std::string_view key, const std::string& value) override { setText(key, value); }

    /// The copy is of the whole file, beside it: "Tarvik.conf.unreadable", "Tarvik.conf.unreadable.2"...
    bool setAside(std::string_view key) override;

    std::string problem() const override { return problem_; }
    Subscription observeProblem(std::function<void()> observer) override { return observers_.add(std::move(observer)); }

private:
    void write(std::string_view key, IniText::Words words);
    std::error_code save();
    std::error_code saveOnce();

    const std::filesystem::path file_;
    LogSink& log_;
    IniText ini_;
    /// What is not in the file yet.
    std::map<std::string, IniText::Words, std::less<>> pending_;
    std::string problem_;
    Observers<> observers_;
};

} // namespace tarvik
