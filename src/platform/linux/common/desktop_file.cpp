#include "platform/linux/common/desktop_file.h"

#include <utility>

namespace tarvik {
namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return trimmed(line);
}

} // namespace

std::optional<DesktopFileKeys> DesktopFileKeys::read(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    bool inGroup = false;
    DesktopFileKeys result;
    while (!text.empty()) {
        const auto line = takeLine(text);
        if (line.starts_with('#'))
            continue;
        if (line.starts_with('[')) {
            if (inGroup)
                break; // the groups of the application's actions follow
            inGroup = line == "[Desktop Entry]";
            continue;
        }
        const auto equals = line.find('=');
        if (inGroup && equals != std::string_view::npos)
            result.keys_.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return inGroup ? std::optional(std::move(result)) : std::nullopt;
}

std::string_view DesktopFileKeys::value(std::string_view key) const {
    const auto found = keys_.find(key);
    return found == keys_.end() ? std::string_view() : found->second;
}

} // namespace tarvik
