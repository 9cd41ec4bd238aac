#include "platform/linux/common/paths.h"

#include "ports/platform.h"

#include <cstdlib>
#include <pwd.h>
#include <string>
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

} // namespace

std::filesystem::path stateFolder() {
    auto base = folderFromEnvironment("XDG_STATE_HOME");
    if (base.empty())
        base = home() / ".local/state";
    auto folder = base / "tarvik";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

std::filesystem::path preferencesFile() {
    auto folder = folderFromEnvironment("XDG_CONFIG_HOME");
    if (folder.empty())
        folder = home() / ".config";
    return folder / "Tarvik.conf";
}

std::filesystem::path logFile() { return stateFolder() / "Tarvik.log"; }

} // namespace tarvik
