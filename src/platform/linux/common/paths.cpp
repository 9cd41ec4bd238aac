#include "platform/linux/common/paths.h"

#include "ports/platform.h"

#include <cstdlib>
#include <pwd.h>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace tarvik {
namespace {

/// An XDG folder counts only when it is absolute.
std::filesystem::path folderFromEnvironment(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value == '/' ? value : "";
}

std::filesystem::path home() {
    auto folder = folderFromEnvironment("HOME");
    if (folder.empty()) {
        const auto* user = getpwuid(getuid());
        folder = user ? user->pw_dir : "/";
    }
    return folder;
}

std::filesystem::path configurationFolder() {
    const auto folder = folderFromEnvironment("XDG_CONFIG_HOME");
    return folder.empty() ? home() / ".config" : folder;
}

} // namespace

std::filesystem::path stateFolder() {
    auto base = folderFromEnvironment("XDG_STATE_HOME");
    if (base.empty())
        base = home() / ".local/state";
    return base / "tarvik";
}

std::filesystem::path preferencesFile() { return configurationFolder() / "Tarvik.conf"; }

std::filesystem::path autostartFolder() { return configurationFolder() / "autostart"; }

std::vector<std::filesystem::path> applicationFolders() {
    std::vector<std::filesystem::path> folders;
    const auto add = [&folders](const std::filesystem::path& data) {
        if (data.is_absolute())
            folders.push_back(data / "applications");
    };
    const auto user = folderFromEnvironment("XDG_DATA_HOME");
    add(user.empty() ? home() / ".local/share" : user);
    const char* system = std::getenv("XDG_DATA_DIRS");
    for (std::string_view rest = system && *system ? system : "/usr/local/share:/usr/share"; !rest.empty();) {
        const auto end = rest.find(':');
        add(rest.substr(0, end));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return folders;
}

std::filesystem::path executable() {
    std::error_code error;
    auto path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    // What the kernel says when the file was replaced, by an update for instance.
    constexpr std::string_view deleted = " (deleted)";
    if (path.ends_with(deleted))
        path.resize(path.size() - deleted.size());
    return path;
}

std::filesystem::path logFile() { return stateFolder() / "Tarvik.log"; }

} // namespace tarvik
