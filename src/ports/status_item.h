// The item in the menu bar or panel, and its menu.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// The symbols "hand.draw" and "hand.raised.slash".
enum class StatusIcon : std::uint8_t { handDraw, handRaisedSlash };

struct MenuItem {
    /// Empty for a separator.
    std::string title;
    /// With the platform's command key; 0 for none.
    char keyEquivalent = 0;
    bool enabled = true;
    /// Nothing for an item that has no check mark.
    std::optional<bool> checked;
    std::function<void()> action;

    static MenuItem separator() { return {}; }
    bool isSeparator() const { return title.empty(); }
};

/// Main thread.
class StatusItem {
public:
    virtual ~StatusItem() = default;
    /// `description` is what a screen reader says.
    virtual void setIcon(StatusIcon icon, std::string_view description, bool appearsDisabled) = 0;
    /// `build` is asked each time the menu opens.
    virtual void setMenu(std::function<std::vector<MenuItem>()> build) = 0;
};

} // namespace tarvik
