// One object of another application's interface, as the accessibility service shows it.
#pragma once

#include "platform/macos/cf_ref.h"

#include <ApplicationServices/ApplicationServices.h>

#include <optional>
#include <string>

namespace tarvik {

/// What reading an attribute gave.
struct AxReading {
    /// May be empty even where the read succeeded.
    CfRef<CFTypeRef> value;
    AXError error = kAXErrorFailure;
    /// There is a value.
    explicit operator bool() const { return error == kAXErrorSuccess && value; }
};

/// Calls wait for the application that owns the object, but not long: a read for a quarter of a second; a write for
/// two, so that one that succeeds slowly is not taken for a failure and done a second time by keys. (The system's own
/// limit is six seconds, and objects got from an object do not inherit what was set on it.)
class AxElement {
public:
    static AxElement systemWide();
    static AxElement application(pid_t process);

    /// Nothing when no application has anything there. `x` and `y` in points, origin at the top left of the main
    /// display. For the system-wide element.
    std::optional<AxElement> elementAt(double x, double y) const;

    AxReading read(CFStringRef attribute) const;
    /// The attribute's value when it is an object of the interface.
    std::optional<AxElement> readElement(CFStringRef attribute) const;
    /// The attribute's value in its textual form, or "err" and the error code.
    std::string describe(CFStringRef attribute) const;
    bool isSettable(CFStringRef attribute) const;
    AXError write(CFStringRef attribute, bool value) const;
    /// 0 when it is not known.
    pid_t process() const;

private:
    explicit AxElement(CfRef<AXUIElementRef> element);

    CfRef<AXUIElementRef> element_;
};

} // namespace tarvik
