// What the Dock can do when it is told to.
#pragma once

#include "platform/macos/opener.h"
#include "ports/desktop_shell.h"
#include "support/log.h"

#include <CoreFoundation/CoreFoundation.h>

namespace tarvik {

/// CoreDockSendNotification, which the system has but does not declare.
using DockFunction = int (*)(CFStringRef notification, int unused);

/// Looked up on the first call, for the life of the process; null where the system lacks it.
DockFunction coreDockSendNotification();

/// Main thread.
class DockShell final : public DesktopShell {
public:
    DockShell(Opener& opener, LogSink& log, DockFunction (*lookUp)() = coreDockSendNotification)
        : opener_(opener), log_(log), lookUp_(lookUp) {}

    bool perform(ActionKind kind) override;

private:
    bool notify(const char* name);

    Opener& opener_;
    LogSink& log_;
    DockFunction (*lookUp_)();
};

} // namespace tarvik
