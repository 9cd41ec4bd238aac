// What the status item's menu holds.
#pragma once

#include "model/wording.h"
#include "ports/status_item.h"

#include <functional>
#include <vector>

namespace tarvik {

struct StatusMenuState {
    bool enabled = false;
    bool trusted = false;
    /// Whether there is somebody to ask for updates.
    bool updates = false;
};

struct StatusMenuActions {
    std::function<void()> toggleEnabled;
    std::function<void()> grantPermission;
    std::function<void()> openPreferences;
    std::function<void()> checkForUpdates;
    std::function<void()> quit;
};

std::vector<MenuItem> statusMenu(const StatusMenuState& state, const StatusMenuActions& actions,
                                 const Wording& wording);

} // namespace tarvik
