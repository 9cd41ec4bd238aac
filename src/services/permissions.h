// The observable state of the permission.
#pragma once

#include "ports/permission.h"
#include "support/observers.h"

#include <functional>

namespace tarvik {

/// As fresh as its last refresh. Main thread.
class Permissions {
public:
    explicit Permissions(Permission& permission) : permission_(permission), trusted_(permission.trusted()) {}

    bool trusted() const { return trusted_; }
    /// Asks the system again.
    void refresh() { assign(permission_.trusted()); }
    /// The same, with the system's prompt when the permission is missing.
    void request() { assign(permission_.request()); }
    void openSettings() { permission_.openSettings(); }

    /// Told after every refresh.
    [[nodiscard]] Subscription observe(std::function<void()> observer) { return observers_.add(std::move(observer)); }

private:
    void assign(bool trusted) {
        trusted_ = trusted;
        observers_.notify();
    }

    Permission& permission_;
    bool trusted_;
    Observers<> observers_;
};

} // namespace tarvik
