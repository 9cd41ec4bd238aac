// Whether the system lets this process see the input of other applications and act on their windows.
#pragma once

namespace tarvik {

/// Main thread.
class Permission {
public:
    virtual ~Permission() = default;
    virtual bool trusted() = 0;
    /// The same, and the system asks the user when the permission is missing and it can be asked for.
    virtual bool request() = 0;
    /// Shows the user where the permission is given.
    virtual void openSettings() = 0;
};

} // namespace tarvik
