#import "platform/macos/process_activity.h"

#import "platform/macos/ns_text.h"

namespace tarvik {

/// The activity lasts as long as its token.
void ProcessActivity::beginLatencyCritical(std::string_view reason) {
    @autoreleasepool {
        token_ = ObjcRef<id>::retain([[NSProcessInfo processInfo]
            beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep | NSActivityLatencyCritical
                              reason:nsString(reason)]);
    }
}

} // namespace tarvik
