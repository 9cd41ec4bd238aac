// The text of a desktop file (Desktop Entry Specification 1.5), whoever wrote it.
#pragma once

#include <map>
#include <optional>
#include <string_view>

namespace tarvik {

/// The keys of the group [Desktop Entry]. Names and values are parts of the text that was read, without the blanks
/// around them; backslashes in values are as they were.
class DesktopFileKeys {
public:
    /// Nothing when the text has no such group. Of two keys with the same name the first counts; lines that are no keys
    /// do not.
    static std::optional<DesktopFileKeys> read(std::string_view text);

    /// Empty when there is no such key.
    std::string_view value(std::string_view key) const;
    bool contains(std::string_view key) const { return keys_.contains(key); }

private:
    std::map<std::string_view, std::string_view> keys_;
};

} // namespace tarvik
