// The environment, each variable that is honoured a line of the input: whatever stands there, files are where a user
// could look for them, and an entry starts with the session or does not.
#include "platform/linux/common/paths.h"
#include "platform/linux/common/xdg_login_item.h"
#include "require.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace tarvik {
namespace {

using fuzz::require;

constexpr const char* variables[] = {"HOME", "XDG_CONFIG_HOME",    "XDG_DATA_HOME", "XDG_DATA_DIRS",
                                     "PATH", "XDG_CURRENT_DESKTOP"};

void setFrom(std::string bytes) {
    for (const auto* name : variables) {
        const auto value = bytes.substr(0, bytes.find('\n'));
        bytes.erase(0, value.size() + 1);
        value.empty() ? unsetenv(name) : setenv(name, value.c_str(), 1);
    }
}

void paths() {
    for (const auto& path : {preferencesFile(), autostartFolder()})
        require(path.is_absolute(), "a file beside wherever the program was started");
    require(preferencesFile().filename() == "Tarvik.conf", "another file");
    const auto folders = applicationFolders();
    require(!folders.empty(), "no folder of applications");
    for (const auto& folder : folders)
        require(folder.is_absolute() && folder.filename() == "applications", "a strange folder of applications");
}

void session() {
    const char* set = std::getenv("XDG_CURRENT_DESKTOP");
    const std::string desktop = set ? set : "";
    const std::string entry = "[Desktop Entry]\nExec=tarvik\n";
    require(startsWithSession(entry, desktop), "an entry for every desktop");
    require(!startsWithSession(entry + "OnlyShowIn=" + '\x01' + ";\n", desktop) || desktop.find('\x01') != desktop.npos,
            "an entry for another desktop");
    startsWithSession(entry + "TryExec=" + desktop + '\n', desktop);
    startsWithSession(entry + "TryExec=tarvik\n", desktop);
}

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::setFrom(std::string(reinterpret_cast<const char*>(data), size));
    tarvik::paths();
    tarvik::session();
    return 0;
}
