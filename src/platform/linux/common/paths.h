// Where the user's files are, by the XDG base directories.
#pragma once

#include <filesystem>

namespace tarvik {

/// $XDG_STATE_HOME/tarvik (~/.local/state/tarvik), made if it was not there. Needs no toolkit.
std::filesystem::path stateFolder();

/// $XDG_CONFIG_HOME/Tarvik.conf (~/.config/Tarvik.conf).
std::filesystem::path preferencesFile();

/// $XDG_CONFIG_HOME/autostart (~/.config/autostart).
std::filesystem::path autostartFolder();

/// The program's own file, links resolved.
std::filesystem::path executable();

} // namespace tarvik
