#include "platform/macos/ax_permission.h"

#include "platform/macos/cf_ref.h"

#include <ApplicationServices/ApplicationServices.h>

namespace tarvik {

bool AxPermission::trusted() { return AXIsProcessTrusted(); }

bool AxPermission::request() {
    const void* key = kAXTrustedCheckOptionPrompt;
    const void* value = kCFBooleanTrue;
    const auto options = CfRef<CFDictionaryRef>::adopt(CFDictionaryCreate(
        kCFAllocatorDefault, &key, &value, 1, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    return AXIsProcessTrustedWithOptions(options.get());
}

void AxPermission::openSettings() {
    opener_.openUrl("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
}

} // namespace tarvik
