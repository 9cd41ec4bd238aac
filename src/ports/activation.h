// Bringing the program to the front.
#pragma once

namespace tarvik {

/// Main thread.
class Activation {
public:
    virtual ~Activation() = default;
    /// The program's windows come over those of other applications, whatever the user was doing there.
    virtual void activate() = 0;
};

} // namespace tarvik
