#import "platform/macos/appkit_applications.h"

#import "platform/macos/appkit_icon.h"
#import "platform/macos/ns_text.h"

#import <AppKit/AppKit.h>

namespace tarvik {

std::vector<RunningApplication> AppKitApplications::running() {
    std::vector<RunningApplication> result;
    @autoreleasepool {
        for (NSRunningApplication* application in [[NSWorkspace sharedWorkspace] runningApplications]) {
            result.push_back({[application processIdentifier],
                              optionalText([application bundleIdentifier]),
                              optionalText([application localizedName]),
                              [application activationPolicy] == NSApplicationActivationPolicyRegular});
        }
    }
    return result;
}

std::optional<InstalledApplication> AppKitApplications::installed(std::string_view id, int iconSize) {
    @autoreleasepool {
        NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
        NSString* path = [[workspace URLForApplicationWithBundleIdentifier:nsString(id)] path];
        if (!path)
            return std::nullopt;
        return InstalledApplication{text([[NSFileManager defaultManager] displayNameAtPath:path]),
                                    iconSize > 0 ? iconPixels([workspace iconForFile:path], iconSize) : std::nullopt};
    }
}

std::string AppKitApplications::ownId() const { return text([[NSBundle mainBundle] bundleIdentifier]); }

} // namespace tarvik
