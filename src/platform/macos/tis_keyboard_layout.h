// The current keyboard layout, from the text input sources.
#pragma once

#include "ports/keyboard_layout.h"

#include <functional>

namespace tarvik {

/// Main thread only, as the text input sources are; so is everything that asks for keys on macOS.
class TisKeyboardLayout final : public KeyboardLayout {
public:
    /// `changed` is called on the main thread when the user has chosen another layout.
    explicit TisKeyboardLayout(std::function<void()> changed);
    ~TisKeyboardLayout() override;
    TisKeyboardLayout(const TisKeyboardLayout&) = delete;
    TisKeyboardLayout& operator=(const TisKeyboardLayout&) = delete;

    std::optional<std::string> character(std::uint16_t keyCode) const override;
    std::optional<std::uint16_t> positionOf(char letter) const override;

private:
    const std::function<void()> changed_;
};

} // namespace tarvik
