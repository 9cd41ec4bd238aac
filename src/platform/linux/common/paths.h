// Where the user's files are, by the XDG base directories.
#pragma once

#include <filesystem>
#include <vector>

namespace tarvik {

/// $XDG_STATE_HOME/tarvik (~/.local/state/tarvik). Needs no toolkit.
std::filesystem::path stateFolder();

/// $XDG_CONFIG_HOME/Tarvik.conf (~/.config/Tarvik.conf).
std::filesystem::path preferencesFile();

/// $XDG_CONFIG_HOME/autostart (~/.config/autostart).
std::filesystem::path autostartFolder();

/// The "applications" folders of $XDG_DATA_HOME (~/.local/share) and $XDG_DATA_DIRS, the more important ones first.
/// Relative folders do not count.
std::vector<std::filesystem::path> applicationFolders();

/// The program's own file, links resolved.
std::filesystem::path executable();

} // namespace tarvik
