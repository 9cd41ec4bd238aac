// Starting with the session, by the system's registry of login items.
#pragma once

#include "ports/login_item.h"

namespace tarvik {

class MainAppLoginItem final : public LoginItem {
public:
    /// Only what is registered and allowed counts; an item that waits for the user's approval does not.
    bool enabled() const override;
    std::optional<std::string> setEnabled(bool on) override;
};

} // namespace tarvik
