// What the user has chosen, as one immutable value that the tap's thread can read without asking anyone.
#pragma once

#include "model/gesture.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// The button that is held to draw. The case names are persisted.
enum class TriggerButton : std::uint8_t { right, middle };
std::string_view rawValue(TriggerButton button);
std::optional<TriggerButton> triggerButtonFromRawValue(std::string_view text);

/// What the wheel steps through while the gesture button is held. The case names are persisted.
enum class ScrollBinding : std::uint8_t { tabs, spaces, windows, none };
std::string_view rawValue(ScrollBinding binding);
std::optional<ScrollBinding> scrollBindingFromRawValue(std::string_view text);

/// An action of the table with the title that people see, made where the keyboard layout is known.
struct BoundAction {
    GestureAction action;
    std::string title;
    friend bool operator==(const BoundAction&, const BoundAction&) = default;
};

/// How long the gesture button is held still before its press goes to the application: this number of milliseconds in
/// the range that is offered, 200 to 1000, or never (zero).
std::chrono::milliseconds dragDelayFrom(double milliseconds);

/// One snapshot. The member initialisers are the registered defaults.
struct Preferences {
    bool enabled = true;
    TriggerButton triggerButton = TriggerButton::right;
    bool showTrail = true;
    /// The distance in points that makes a stroke.
    double minStroke = 30.0;
    ScrollBinding scrollBinding = ScrollBinding::tabs;
    /// Identifiers of the applications in which the gesture button is an ordinary button.
    std::vector<std::string> excludedApps;
    bool reverseVertical = false;
    bool reverseHorizontal = false;
    /// See `dragDelayFrom`.
    std::chrono::milliseconds dragDelay{0};
    std::map<std::string, BoundAction, std::less<>> mappings;
};

} // namespace tarvik
