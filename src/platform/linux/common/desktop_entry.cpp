#include "platform/linux/common/desktop_entry.h"

#include "platform/linux/common/desktop_file.h"
#include "support/printable.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarvik {
namespace {

constexpr std::size_t maxText = 256;
constexpr std::size_t maxCategories = 64;

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        switch (const char c = text[++i]) {
        case 's':
        case 'n':
        case 't':
        case 'r':
            result += ' ';
            break;
        default:
            result += c;
        }
    }
    return printable(result, maxText);
}

/// lang_COUNTRY@MODIFIER, lang_COUNTRY, lang@MODIFIER, lang: the order in which the keys are tried.
std::array<std::string, 4> localeKeys(std::string_view locale) {
    const auto at = locale.find('@');
    const std::string modifier(at == std::string_view::npos ? "" : locale.substr(at));
    const auto language = locale.substr(0, std::min({locale.find('_'), locale.find('.'), at}));
    const auto country = locale.substr(0, std::min(locale.find('.'), at));
    return {std::string(country) + modifier, std::string(country), std::string(language) + modifier,
            std::string(language)};
}

std::string_view localized(const DesktopFileKeys& keys, std::string_view key, std::string_view locale) {
    if (!locale.empty()) {
        for (const auto& name : localeKeys(locale)) {
            if (const auto text = keys.value(std::string(key) + "[" + name + "]"); !text.empty())
                return text;
        }
    }
    return keys.value(key);
}

std::vector<std::string> list(std::string_view text) {
    std::vector<std::string> items;
    while (!text.empty() && items.size() < maxCategories) {
        const auto end = text.find(';');
        if (auto item = unescaped(text.substr(0, end)); !item.empty())
            items.push_back(std::move(item));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return items;
}

/// The first word of a command line, without quotes.
std::string takeWord(std::string_view& command) {
    command.remove_prefix(std::min(command.find_first_not_of(' '), command.size()));
    std::string word;
    bool quoted = false;
    std::size_t used = 0;
    for (; used < command.size() && (quoted || command[used] != ' '); ++used) {
        if (command[used] == '"')
            quoted = !quoted;
        else
            word += command[used];
    }
    command.remove_prefix(used);
    return word;
}

bool runsOthers(std::string_view program) {
    constexpr std::string_view names[] = {"sh",   "bash", "dash", "python",  "python3", "perl", "ruby",  "java",
                                          "node", "wine", "mono", "flatpak", "snap",    "sudo", "pkexec"};
    return std::find(std::begin(names), std::end(names), program) != std::end(names);
}

std::string programOf(std::string_view command) {
    auto word = takeWord(command);
    if (word == "env" || word == "/usr/bin/env") {
        do
            word = takeWord(command);
        while (!word.empty() && (word.front() == '-' || word.find('=') != std::string::npos));
    }
    word.erase(0, word.find_last_of('/') + 1);
    return runsOthers(word) ? std::string() : printable(word, maxText);
}

} // namespace

bool DesktopEntry::hasCategory(std::string_view category) const {
    return std::find(categories.begin(), categories.end(), category) != categories.end();
}

std::optional<DesktopEntry> parseDesktopEntry(std::string id, std::string_view text, std::string_view locale) {
    const auto keys = DesktopFileKeys::read(text);
    if (!keys)
        return std::nullopt;
    DesktopEntry entry;
    entry.hidden = keys->value("Hidden") == "true";
    if (!entry.hidden && keys->value("Type") != "Application")
        return std::nullopt;
    entry.id = std::move(id);
    entry.name = unescaped(localized(*keys, "Name", locale));
    entry.icon = unescaped(keys->value("Icon"));
    entry.startupWmClass = unescaped(keys->value("StartupWMClass"));
    entry.program = programOf(keys->value("Exec"));
    entry.categories = list(keys->value("Categories"));
    entry.noDisplay = keys->value("NoDisplay") == "true";
    return entry;
}

} // namespace tarvik
