// What the module offers to the loader.
#pragma once

#include "preferences/preferences_window.h"

namespace tarvik {

inline constexpr auto preferencesModuleEntry = "tarvikMakePreferencesWindow";
/// Null when the window cannot be made; the reason is in the log. The caller owns it.
using PreferencesModuleEntry = PreferencesWindow* (*)(const PreferencesContext& context, LogSink& log);

} // namespace tarvik
