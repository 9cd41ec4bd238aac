// The program's windows to the front, by the window manager.
#pragma once

#include "ports/activation.h"

namespace tarvik {

/// Window managers keep programs from taking the focus unless the user has just typed or clicked in them, and the user
/// of a status item or of a gesture has not. So the request says that it comes from the user, as a panel's does
/// (Extended Window Manager Hints, _NET_ACTIVE_WINDOW). Main thread; needs a QGuiApplication on X11.
class X11Activation final : public Activation {
public:
    void activate() override;
};

} // namespace tarvik
