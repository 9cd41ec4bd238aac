// Starting with the session.
#pragma once

#include <optional>
#include <string>

namespace tarvik {

/// The truth is the system's registry of login items, which others change too. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;
    virtual bool enabled() const = 0;
    /// What went wrong, in the system's words; nothing when it succeeded.
    virtual std::optional<std::string> setEnabled(bool on) = 0;
};

} // namespace tarvik
