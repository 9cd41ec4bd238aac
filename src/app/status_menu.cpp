#include "app/status_menu.h"

namespace tarvik {

std::vector<MenuItem> statusMenu(const StatusMenuState& state, const StatusMenuActions& actions,
                                 const Wording& wording) {
    std::vector<MenuItem> items = {
        {.title = "Tarvik — Mouse Gestures", .enabled = false},
        MenuItem::separator(),
        {.title = "Gestures Enabled", .keyEquivalent = 'e', .checked = state.enabled, .action = actions.toggleEnabled},
    };
    if (!state.trusted)
        items.push_back({.title = std::string(wording.grantPermission), .action = actions.grantPermission});
    items.push_back(MenuItem::separator());
    items.push_back({.title = "Preferences…", .keyEquivalent = ',', .action = actions.openPreferences});
    if (state.updates)
        items.push_back({.title = "Check for Updates…", .action = actions.checkForUpdates});
    items.push_back(MenuItem::separator());
    items.push_back({.title = "Quit Tarvik", .keyEquivalent = 'q', .action = actions.quit});
    return items;
}

} // namespace tarvik
