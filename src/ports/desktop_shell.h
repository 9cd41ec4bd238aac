// What the desktop itself can do.
#pragma once

#include "model/action_kind.h"

namespace tarvik {

class DesktopShell {
public:
    virtual ~DesktopShell() = default;
    /// True when the desktop took the action on; otherwise the caller posts keys. Logs what it did. The actions'
    /// thread.
    virtual bool perform(ActionKind kind) = 0;
};

} // namespace tarvik
