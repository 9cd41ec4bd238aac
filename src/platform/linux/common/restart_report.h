// What Tarvik says when its watchdog has started it again.
#pragma once

#include "platform/linux/common/desktop_notice.h"
#include "platform/linux/common/recent_ends.h"
#include "support/log.h"

namespace tarvik {

/// What the watchdog handed on as "--restarted ENDS"; nothing when somebody else has started the program.
RecentEnds restartHistory(int argc, char** argv);

/// Says what has happened; nothing when nothing has. Needs an event loop later.
void reportRestart(const RecentEnds& history, LogSink& log, DesktopNotice& notice);

/// Says that Tarvik stays off because that happened too often; the program's exit code.
int stayOff(int& argc, char** argv, const RecentEnds& history, LogSink& log);

} // namespace tarvik
