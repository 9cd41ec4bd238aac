// The closed catalogue of what a gesture can do. What each kind is called and which keys it has differ by platform:
// see vocabulary.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvik {

/// In the order of the action picker. The case names are persisted (see `rawValue`).
enum class ActionKind : std::uint8_t {
    none,
    spaceLeft,
    spaceRight,
    missionControl,
    appExpose,
    showDesktop,
    launchpad,
    nextTab,
    previousTab,
    newTab,
    closeTab,
    reopenTab,
    nextWindow,
    previousWindow,
    previousApp,
    closeWindow,
    minimizeWindow,
    fullScreen,
    enterFullScreen,
    exitFullScreen,
    hideApp,
    quitApp,
    back,
    forward,
    reload,
    scrollTop,
    scrollBottom,
    custom,
};

inline constexpr std::size_t actionKindCount = 28;

constexpr std::size_t index(ActionKind kind) { return static_cast<std::size_t>(kind); }

/// Every kind, in declaration order.
const std::array<ActionKind, actionKindCount>& allActionKinds();

/// The persisted name, equal to the case name.
std::string_view rawValue(ActionKind kind);
/// The kind of a persisted name; nothing for any other text.
std::optional<ActionKind> actionKindFromRawValue(std::string_view text);

/// The title of the picker section that a kind belongs to. The first section, of `none` alone, has an empty title.
std::string_view sectionTitle(ActionKind kind);

} // namespace tarvik
