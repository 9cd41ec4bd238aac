#include "platform/linux/common/xdg_login_item.h"

#include "platform/linux/common/desktop_file.h"
#include "platform/linux/common/text_file.h"

#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace tarvik {
namespace {

/// Whether two lists have a name in common.
bool meet(std::string_view names, char separator, std::string_view others, char otherSeparator) {
    const auto forEach = [](std::string_view list, char mark, const auto& visit) {
        while (!list.empty()) {
            const auto end = list.find(mark);
            if (end != 0 && visit(list.substr(0, end)))
                return true;
            list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
        }
        return false;
    };
    return forEach(names, separator, [&](std::string_view name) {
        return forEach(others, otherSeparator, [&](std::string_view other) { return name == other; });
    });
}

/// A program without a folder is looked for where the shell would.
bool isProgram(const std::string& name) {
    if (name.find('/') != std::string::npos)
        return access(name.c_str(), X_OK) == 0;
    const char* path = std::getenv("PATH");
    for (std::string_view folders = path ? path : ""; !folders.empty();) {
        const auto end = folders.find(':');
        if (access((std::string(folders.substr(0, end)) + '/' + name).c_str(), X_OK) == 0)
            return true;
        folders.remove_prefix(end == std::string_view::npos ? folders.size() : end + 1);
    }
    return false;
}

/// Backslashes in values of desktop files stand for other characters.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text)
        result += c == '\\' ? "\\\\" : c == '\n' ? "\\n" : std::string(1, c);
    return result;
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '\\' && i + 1 < text.size();
        const char c = text[escape ? ++i : i];
        result += escape && c == 'n' ? '\n' : escape && c == 's' ? ' ' : c;
    }
    return result;
}

} // namespace

bool startsWithSession(std::string_view entry, std::string_view desktop) {
    const auto keys = DesktopFileKeys::read(entry);
    if (!keys || keys->value("Exec").empty() || keys->value("Hidden") == "true" ||
        keys->value("X-GNOME-Autostart-enabled") == "false")
        return false;
    if (keys->contains("OnlyShowIn") && !meet(keys->value("OnlyShowIn"), ';', desktop, ':'))
        return false;
    if (meet(keys->value("NotShowIn"), ';', desktop, ':'))
        return false;
    const auto program = unescaped(keys->value("TryExec"));
    return program.empty() || isProgram(program);
}

std::string execArgument(std::string_view path) {
    std::string quoted;
    for (const char c : path) {
        if (c == '%')
            quoted += '%'; // alone it would begin a field code
        else if (c == '"' || c == '`' || c == '$' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return escaped('"' + quoted + '"');
}

bool XdgLoginItem::enabled() const {
    const auto [text, error] = readTextFile(file_);
    const char* desktop = std::getenv("XDG_CURRENT_DESKTOP");
    return !error && startsWithSession(text, desktop ? desktop : "");
}

std::optional<std::string> XdgLoginItem::setEnabled(bool on) {
    if (!on) {
        std::error_code error;
        std::filesystem::remove(file_, error);
        return refusal(error);
    }
    // TryExec: a program that was removed leaves no entry that fails.
    const auto entry = "[Desktop Entry]\nType=Application\nName=Tarvik\nComment=Mouse gestures\nIcon=tarvik\nExec=" +
                       execArgument(program_.native()) + "\nTryExec=" + escaped(program_.native()) +
                       "\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
    const auto [before, error] = readTextFile(file_);
    return refusal(error ? error : replaceTextFile(file_, before, entry));
}

std::optional<std::string> XdgLoginItem::refusal(const std::error_code& error) const {
    if (!error)
        return std::nullopt;
    return file_.native() + ": " + error.message();
}

} // namespace tarvik
