// One installed event tap of the system: a Mach port and its source on the main run loop.
#pragma once

#include "platform/macos/cf_ref.h"

#include <ApplicationServices/ApplicationServices.h>

#include <memory>

namespace tarvik {

/// Main thread.
class TapPort {
public:
    /// A tap that is listening. Null when the system refuses. `context` reaches the callback as it is and must outlive
    /// the port.
    static std::unique_ptr<TapPort> create(CGEventTapCallBack callback, void* context);
    ~TapPort();
    TapPort(const TapPort&) = delete;
    TapPort& operator=(const TapPort&) = delete;

    void enable(bool on) { CGEventTapEnable(port_.get(), on); }
    bool enabled() const { return CGEventTapIsEnabled(port_.get()); }
    /// False once the system has given the port up; it then never works again.
    bool valid() const { return CFMachPortIsValid(port_.get()); }

private:
    TapPort(CfRef<CFMachPortRef> port, CfRef<CFRunLoopSourceRef> source);

    CfRef<CFMachPortRef> port_;
    CfRef<CFRunLoopSourceRef> source_;
};

} // namespace tarvik
