#import "platform/macos/appkit_application.h"

#import <AppKit/AppKit.h>

@interface TarvikApplicationDelegate : NSObject <NSApplicationDelegate> {
@public
    tarvik::AppKitApplication* owner_;
}
@end

@implementation TarvikApplicationDelegate
- (BOOL)applicationShouldHandleReopen:(NSApplication*)application hasVisibleWindows:(BOOL)visible {
    (void)application;
    (void)visible;
    if (owner_)
        owner_->reopen();
    return YES;
}
@end

namespace tarvik {

AppKitApplication::AppKitApplication()
    : delegate_(ObjcRef<TarvikApplicationDelegate*>::adopt([[TarvikApplicationDelegate alloc] init])) {
    static_cast<TarvikApplicationDelegate*>(delegate_)->owner_ = this;
    [[NSApplication sharedApplication] setDelegate:delegate_];
    becomeAgent();
}

/// Nobody holds the delegate but we; by now it may be the toolkit's that is asked.
AppKitApplication::~AppKitApplication() {
    NSApplication* application = [NSApplication sharedApplication];
    if ([application delegate] == static_cast<TarvikApplicationDelegate*>(delegate_))
        [application setDelegate:nil];
    static_cast<TarvikApplicationDelegate*>(delegate_)->owner_ = nullptr;
}

void AppKitApplication::becomeAgent() {
    [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

void AppKitApplication::activate() { [[NSApplication sharedApplication] activateIgnoringOtherApps:YES]; }

void AppKitApplication::terminate() { [[NSApplication sharedApplication] terminate:nil]; }

void AppKitApplication::reopen() {
    if (reopened_)
        reopened_();
}

} // namespace tarvik
