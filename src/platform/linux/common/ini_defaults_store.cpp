#include "platform/linux/common/ini_defaults_store.h"

#include "platform/linux/common/text.h"
#include "platform/linux/common/text_file.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace tarvik {
namespace {

/// How often a write starts anew because somebody else was faster.
constexpr int attempts = 5;
/// More copies than this are a fault of ours.
constexpr int mostCopies = 100;

std::filesystem::path copyName(const std::filesystem::path& file, int number) {
    auto name = file;
    name += ".unreadable";
    if (number > 1)
        name += "." + std::to_string(number);
    return name;
}

} // namespace

IniDefaultsStore::IniDefaultsStore(std::filesystem::path file, LogSink& log) : file_(std::move(file)), log_(log) {
    auto found = readTextFile(file_);
    if (found.error)
        log_.write("preferences cannot be read: " + file_.string() + ": " + found.error.message());
    ini_ = IniText(std::move(found.text));
}

std::optional<bool> IniDefaultsStore::boolean(std::string_view key) const {
    const auto word = lowerCase(text(key).value_or(""));
    if (word == "true" || word == "yes")
        return true;
    if (word == "false" || word == "no")
        return false;
    if (const auto value = number(key))
        return *value != 0;
    return std::nullopt;
}

std::optional<double> IniDefaultsStore::number(std::string_view key) const {
    const auto word = text(key).value_or("");
    const char* begin = word.data() + (word.starts_with('+') ? 1 : 0);
    const char* end = word.data() + word.size();
    double value = 0;
    const auto [rest, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || rest != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<std::string> IniDefaultsStore::text(std::string_view key) const {
    const auto words = ini_.words(key);
    return words && words->size() == 1 ? std::optional(words->front()) : std::nullopt;
}

std::optional<std::vector<std::string>> IniDefaultsStore::textList(std::string_view key) const {
    return ini_.words(key);
}

void IniDefaultsStore::setBoolean(std::string_view key, bool value) { write(key, {value ? "true" : "false"}); }

void IniDefaultsStore::setNumber(std::string_view key, double value) {
    std::array<char, 32> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    write(key, {std::string(digits.data(), end)});
}

void IniDefaultsStore::setText(std::string_view key, const std::string& value) { write(key, {value}); }
void IniDefaultsStore::setTextList(std::string_view key, const std::vector<std::string>& value) { write(key, value); }

void IniDefaultsStore::write(std::string_view key, IniText::Words words) {
    ini_.set(key, words);
    pending_.insert_or_assign(std::string(key), std::move(words));
    const auto error = save();
    auto problem = error ? file_.string() + ": " + error.message() : "";
    if (error)
        log_.write("preferences cannot be written: " + problem);
    if (problem == problem_)
        return;
    problem_ = std::move(problem);
    observers_.notify();
}

std::error_code IniDefaultsStore::save() {
    const FolderLock lock(file_.parent_path());
    auto error = saveOnce();
    for (int i = 1; i < attempts && error == std::errc::resource_unavailable_try_again; ++i)
        error = saveOnce();
    return error;
}

std::error_code IniDefaultsStore::saveOnce() {
    const auto found = readTextFile(file_);
    if (found.error)
        return found.error;
    IniText changed(found.text);
    for (const auto& [key, words] : pending_)
        changed.set(key, words);
    if (changed.text() != found.text) {
        if (const auto error = replaceTextFile(file_, found.text, changed.text()))
            return error;
    }
    ini_ = std::move(changed);
    pending_.clear();
    return {};
}

bool IniDefaultsStore::setAside(std::string_view key) {
    const auto found = readTextFile(file_);
    if (!found.error && !IniText(found.text).contains(key))
        return true;
    const auto what = "preferences: '" + std::string(key) + "' makes no sense";
    auto error = found.error ? found.error : std::make_error_code(std::errc::file_exists);
    for (int number = 1; error == std::errc::file_exists && number <= mostCopies; ++number) {
        const auto copy = copyName(file_, number);
        if (readTextFile(copy).text == found.text)
            return true;
        error = createTextFile(copy, found.text);
        if (!error)
            log_.write(what + "; the file as it was is kept as " + copy.string());
    }
    if (error)
        log_.write(what + ", and stays since it cannot be copied: " + error.message());
    return !error;
}

} // namespace tarvik
