// Desktop files, of applications and in the autostart folder: what is read is fit to be shown, what does not belong to
// the group changes nothing, and the entry that we write means what it should to others.
#include "platform/linux/common/desktop_entry.h"
#include "platform/linux/common/xdg_login_item.h"
#include "require.h"

#include <cstdint>
#include <string>
#include <tuple>

namespace tarvik {
namespace {

using fuzz::isLine;
using fuzz::isText;
using fuzz::require;

std::string replaced(std::string_view text, std::string_view by) {
    std::string result;
    for (const char c : text)
        c == '\n' ? result += by : result += c;
    return result;
}

auto parts(const std::optional<DesktopEntry>& entry) {
    const auto e = entry.value_or(DesktopEntry());
    return std::tuple(entry.has_value(), e.name, e.icon, e.startupWmClass, e.program, e.categories, e.noDisplay,
                      e.hidden);
}

void entryOf(std::string_view text, std::string_view locale) {
    const auto entry = parseDesktopEntry("id", text, locale);
    if (entry) {
        require(text.find("[Desktop Entry]") != text.npos, "an entry without its group");
        for (const auto& value : {entry->name, entry->icon, entry->startupWmClass, entry->program})
            require(isLine(value) && value.size() <= 256, "what is no short line");
        require(entry->categories.size() <= 64, "more categories than anybody needs");
        require(entry->program.find('/') == std::string::npos, "a program with its folder");
    }
    const bool starts = startsWithSession(text, locale);
    const auto requireSame = [&](const std::string& other, const char* what) {
        require(parts(parseDesktopEntry("id", other, locale)) == parts(entry), what);
        require(startsWithSession(other, locale) == starts, what);
    };
    requireSame(replaced(text, "\r\n"), "line ends matter");
    requireSame(replaced(text, "\n# Hidden=true\n\n \t\n"), "comments or empty lines matter");
    requireSame("\n[Before]\nHidden=true\n" + std::string(text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text),
                "another group matters");
    if (entry || starts)
        requireSame(std::string(text) + "\n[Desktop Action Other]\nName=Other\nHidden=true\nExec=other\nTryExec=/no\n",
                    "a later group matters");
    require(!startsWithSession("[Desktop Entry]\nHidden=true\n" + std::string(text), locale), "a hidden entry starts");
}

/// As a launcher reads a value: backslashes of the file's format first, those of quoted arguments then, and codes last.
std::string argumentOf(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\') {
            text += value[i];
            continue;
        }
        require(++i < value.size(), "a backslash at the end");
        const auto place = std::string_view("sntr\\").find(value[i]);
        require(place != std::string_view::npos, "a backslash that stands for nothing");
        text += " \n\t\r\\"[place];
    }
    require(text.size() >= 2 && text.front() == '"' && text.back() == '"', "no quotes");
    std::string argument;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        require(std::string_view("\"`$").find(text[i]) == std::string_view::npos, "a bare mark");
        if (text[i] == '\\')
            require(++i + 1 < text.size(), "the last quote is a part of the text");
        else if (text[i] == '%')
            require(text[++i] == '%', "a field code");
        argument += text[i];
    }
    return argument;
}

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto locale = bytes.substr(0, bytes.find('\n'));
    tarvik::entryOf(bytes.substr(std::min(locale.size() + 1, size)), locale);
    const auto argument = tarvik::execArgument(bytes);
    tarvik::require(argument.find('\n') == argument.npos, "more than a line");
    tarvik::require(tarvik::argumentOf(argument) == bytes, "another path");
    return 0;
}
