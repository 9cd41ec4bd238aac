#include "model/action_kind.h"

#include <algorithm>

namespace tarvik {
namespace {

constexpr std::array<std::string_view, actionKindCount> rawValues = {
    "none",        "spaceLeft",      "spaceRight", "missionControl",  "appExpose",
    "showDesktop", "launchpad",      "nextTab",    "previousTab",     "newTab",
    "closeTab",    "reopenTab",      "nextWindow", "previousWindow",  "previousApp",
    "closeWindow", "minimizeWindow", "fullScreen", "enterFullScreen", "exitFullScreen",
    "hideApp",     "quitApp",        "back",       "forward",         "reload",
    "scrollTop",   "scrollBottom",   "custom",
};

} // namespace

const std::array<ActionKind, actionKindCount>& allActionKinds() {
    static constexpr auto kinds = [] {
        std::array<ActionKind, actionKindCount> all{};
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = static_cast<ActionKind>(i);
        return all;
    }();
    return kinds;
}

std::string_view rawValue(ActionKind kind) { return rawValues[index(kind)]; }

std::optional<ActionKind> actionKindFromRawValue(std::string_view text) {
    const auto found = std::find(rawValues.begin(), rawValues.end(), text);
    if (found == rawValues.end())
        return std::nullopt;
    return static_cast<ActionKind>(found - rawValues.begin());
}

std::string_view sectionTitle(ActionKind kind) {
    if (kind == ActionKind::none)
        return "";
    if (kind <= ActionKind::launchpad)
        return "Desktops";
    if (kind <= ActionKind::reopenTab)
        return "Tabs";
    if (kind <= ActionKind::quitApp)
        return "Windows & Apps";
    if (kind <= ActionKind::scrollBottom)
        return "Navigation";
    return "Custom";
}

} // namespace tarvik
