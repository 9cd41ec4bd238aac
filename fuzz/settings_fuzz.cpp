// The preferences' file: whatever stands in it, each property has a value of its type, nothing is written until
// something changes, what is written is read again, and no line that is not ours is lost.
#include "fakes/fake_login_item.h"
#include "fakes/recording_log.h"
#include "model/gesture_table_json.h"
#include "platform/linux/common/ini_defaults_store.h"
#include "require.h"
#include "settings/settings.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace tarvik {
namespace {

namespace fs = std::filesystem;
using fuzz::require;

/// In memory where the system offers that; gone at the end.
struct Folder {
    Folder() {
        std::string name =
            (fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path().string()) + "/tarvik-XXXXXX";
        require(mkdtemp(name.data()) != nullptr, "no folder");
        path = name;
    }
    ~Folder() { fs::remove_all(path); }
    fs::path path;
};

std::string contents(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

/// The lines that are neither one of our keys nor empty.
std::vector<std::string> strangers(const std::string& text) {
    std::vector<std::string> all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto begin = line.find_first_not_of(" \t\r");
        if (begin == std::string::npos)
            continue;
        auto key = line.substr(begin, line.find('=') == std::string::npos ? 0 : line.find('=') - begin);
        key.erase(key.find_last_not_of(" \t\r") + 1);
        bool ours = key.starts_with("added");
        for (int i = 0; i <= static_cast<int>(Setting::mappings); ++i)
            ours = ours || key == settingKey(static_cast<Setting>(i));
        if (!ours)
            all.push_back(line);
    }
    return all;
}

bool isSubsequence(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
    std::size_t found = 0;
    for (const auto& line : whole)
        found += found < part.size() && line == part[found] ? 1 : 0;
    return found == part.size();
}

/// New values made of the input's own bytes, so that every byte is once a part of a value.
struct Choice {
    explicit Choice(const std::string& bytes) {
        std::array<char, 10> head = {};
        std::memcpy(head.data(), bytes.data(), std::min(bytes.size(), head.size()));
        std::memcpy(&stroke, head.data(), sizeof stroke);
        on = (head[8] & 1) != 0;
        binding = static_cast<ScrollBinding>(static_cast<unsigned char>(head[9]) % 4);
        std::istringstream words(bytes);
        for (std::string word; std::getline(words, word, ';');)
            apps.push_back(word);
        table["LU"] = {ActionKind::custom, KeyShortcut{static_cast<std::uint16_t>(bytes.size()), ~std::uint64_t{0}}};
    }
    double stroke = 0;
    bool on = false;
    ScrollBinding binding = ScrollBinding::tabs;
    std::vector<std::string> apps;
    GestureTable table;
};

void requireValid(const Settings& settings) {
    require(settings.triggerButton() <= TriggerButton::middle, "a button that there is not");
    require(settings.scrollBinding() <= ScrollBinding::none, "a binding that there is not");
    require(std::isfinite(settings.minStroke()), "a stroke without a length");
    require(encodeGestureTable(settings.mappings()).has_value(), "a table that cannot be written");
}

void change(Settings& settings, const Choice& choice) {
    settings.setEnabled(choice.on);
    settings.setTriggerButton(choice.on ? TriggerButton::middle : TriggerButton::right);
    settings.setShowTrail(!choice.on);
    settings.setMinStroke(choice.stroke);
    settings.setScrollBinding(choice.binding);
    settings.setExcludedApps(choice.apps);
    settings.setReverseVertical(choice.on);
    settings.setReverseHorizontal(!choice.on);
    settings.setMappings(choice.table);
}

void requireRead(const Settings& settings, const Choice& choice) {
    const double stroke = std::isfinite(choice.stroke) ? choice.stroke : Preferences().minStroke;
    require(settings.enabled() == choice.on && settings.showTrail() != choice.on &&
                settings.reverseVertical() == choice.on && settings.reverseHorizontal() != choice.on &&
                (settings.triggerButton() == TriggerButton::middle) == choice.on &&
                settings.scrollBinding() == choice.binding,
            "another choice was read");
    require(settings.minStroke() == stroke, "another number was read");
    require(settings.excludedApps() == choice.apps, "another list was read");
    for (const auto& [gesture, action] : choice.table)
        require(settings.mappings().at(gesture) == action, "another table was read");
}

void run(const std::string& text) {
    static const Folder folder;
    const auto file = folder.path / "Tarvik.conf";
    const auto copy = folder.path / "Tarvik.conf.unreadable";
    std::ofstream(file, std::ios::binary) << text;
    RecordingLog log;
    const Choice choice(text);
    {
        IniDefaultsStore store(file, log);
        const bool stored = IniText(text).contains("mappings");
        const bool readable = stored && decodeGestureTable(store.data("mappings").value_or("")).has_value();
        auto settings = settingsOver(store);
        requireValid(settings);
        require(readable || settings.mappings() == defaultMappings(), "a table out of nowhere");
        const auto loaded = contents(file);
        require(loaded == text || readable, "written without a change");
        change(settings, choice);
        require(fs::exists(copy) == (stored && !readable), "copied without a need, or not copied");
        if (fs::exists(copy))
            require(strangers(contents(copy)).size() >= strangers(text).size(), "a copy with less");
    }
    const auto written = contents(file);
    require(isSubsequence(strangers(text), strangers(written)), "a line was lost");
    {
        IniDefaultsStore store(file, log);
        requireRead(settingsOver(store), choice);
    }
    require(log.lines().size() == (fs::exists(copy) ? 1U : 0U), "unexpected log lines");
    fs::remove(copy);
}

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::run(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
