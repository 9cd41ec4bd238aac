#import "platform/macos/appkit_workspace.h"

#import "platform/macos/ns_text.h"

#import <AppKit/AppKit.h>

namespace tarvik {

// The tap asks from inside its callback, where nobody else empties a pool: each question has its own.

std::optional<std::string> AppKitWorkspace::frontmostApplication() const {
    @autoreleasepool {
        return optionalText([[[NSWorkspace sharedWorkspace] frontmostApplication] bundleIdentifier]);
    }
}

std::optional<pid_t> AppKitWorkspace::frontmostProcess() const {
    @autoreleasepool {
        NSRunningApplication* application = [[NSWorkspace sharedWorkspace] frontmostApplication];
        return application ? std::optional([application processIdentifier]) : std::nullopt;
    }
}

std::optional<std::string> AppKitWorkspace::localizedName(pid_t process) const {
    @autoreleasepool {
        return optionalText([[NSRunningApplication runningApplicationWithProcessIdentifier:process] localizedName]);
    }
}

bool AppKitWorkspace::fileExists(const std::string& path) const {
    @autoreleasepool {
        return [[NSFileManager defaultManager] fileExistsAtPath:nsString(path)];
    }
}

void AppKitWorkspace::openFile(const std::string& path) {
    @autoreleasepool {
        [[NSWorkspace sharedWorkspace] openURL:[NSURL fileURLWithPath:nsString(path)]];
    }
}

void AppKitWorkspace::openUrl(const std::string& url) {
    @autoreleasepool {
        [[NSWorkspace sharedWorkspace] openURL:[NSURL URLWithString:nsString(url)]];
    }
}

} // namespace tarvik
