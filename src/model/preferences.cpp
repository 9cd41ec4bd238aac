#include "model/preferences.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace tarvik {
namespace {

constexpr std::array<std::string_view, 2> triggerButtons = {"right", "middle"};
constexpr std::array<std::string_view, 4> scrollBindings = {"tabs", "spaces", "windows", "none"};

template <class Enum, std::size_t n>
std::optional<Enum> fromRawValue(const std::array<std::string_view, n>& names, std::string_view text) {
    const auto found = std::find(names.begin(), names.end(), text);
    if (found == names.end())
        return std::nullopt;
    return static_cast<Enum>(found - names.begin());
}

} // namespace

std::chrono::milliseconds dragDelayFrom(double milliseconds) {
    if (!(milliseconds > 0))
        return std::chrono::milliseconds(0);
    return std::chrono::milliseconds(std::lround(std::clamp(milliseconds, 200.0, 1000.0)));
}

std::string_view rawValue(TriggerButton button) { return triggerButtons[static_cast<std::size_t>(button)]; }

std::optional<TriggerButton> triggerButtonFromRawValue(std::string_view text) {
    return fromRawValue<TriggerButton>(triggerButtons, text);
}

std::string_view rawValue(ScrollBinding binding) { return scrollBindings[static_cast<std::size_t>(binding)]; }

std::optional<ScrollBinding> scrollBindingFromRawValue(std::string_view text) {
    return fromRawValue<ScrollBinding>(scrollBindings, text);
}

} // namespace tarvik
