// What the module offers to the loader.
#pragma once

#include "preferences/preferences_window.h"

namespace tarvik {

/// The one function of the module. Null when the window cannot be made; the reason is in the log. The caller owns it.
/// The function's name holds the version (CMakeLists.txt), so that a program whose files have just been replaced does
/// not open the module of its successor.
using PreferencesModuleEntry = PreferencesWindow* (*)(const PreferencesContext& context, LogSink& log);

} // namespace tarvik
