// Displays that exist only in a test.
#pragma once

#include "ports/screens.h"

#include <utility>

namespace tarvik::fake {

class FakeScreens final : public Screens {
public:
    explicit FakeScreens(std::vector<Screen> screens = {{{0, 0, 1000, 800}, 1}}) : screens_(std::move(screens)) {}

    std::vector<Screen> screens() const override { return screens_; }
    void onChange(std::function<void()> handler) override { changed_ = std::move(handler); }

    void change(std::vector<Screen> screens) {
        screens_ = std::move(screens);
        if (changed_)
            changed_();
    }
    bool watched() const { return static_cast<bool>(changed_); }

private:
    std::vector<Screen> screens_;
    std::function<void()> changed_;
};

} // namespace tarvik::fake
