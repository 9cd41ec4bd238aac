// The user's documentation, as it was installed.
#pragma once

#include "support/log.h"

namespace tarvik {

/// Opens it in the program that the desktop has for such files; its section on sessions is near its beginning. A guide
/// that is not there is a line in the log. Main thread.
void openUserGuide(LogSink& log);

} // namespace tarvik
