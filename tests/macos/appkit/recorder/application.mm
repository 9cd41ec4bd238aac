// The application, its events, and the other applications.
#include "macos/appkit/recorder/desk.h"

#include "macos/sim/events.h"

namespace tarvik::recorder {
namespace {

struct Monitor {
    Strong token;
    std::shared_ptr<void> block;
};
std::vector<Monitor> monitors;

NSRunningApplication* makeApplication(const Application& application) {
    NSRunningApplication* made = [[[NSRunningApplication alloc] init] autorelease];
    put(made, "application", application);
    return made;
}

NSRunningApplication* applicationOf(std::optional<pid_t> process) {
    for (const auto& application : desk().applications) {
        if (application.process == process)
            return makeApplication(application);
    }
    return nil;
}

NSString* optionalString(const std::optional<std::string>& text) { return text ? makeString(*text) : nil; }

} // namespace

Desk& desk() {
    static auto& desk = *new Desk;
    return desk;
}

void resetDesk() {
    desk() = Desk();
    calls().clear();
    monitors.clear();
}

bool typeKey(unsigned short code, NSEventModifierFlags modifiers) {
    NSEvent* event = [[[NSEvent alloc] init] autorelease];
    put(event, "keyCode", code);
    put(event, "modifierFlags", modifiers);
    // Those that are there now; each may end itself, and is gone at once then.
    std::vector<std::weak_ptr<void>> told;
    for (const auto& monitor : monitors)
        told.push_back(monitor.block);
    for (const auto& weak : told) {
        void* block = weak.lock().get();
        if (block && !((__bridge NSEvent * (^)(NSEvent*)) block)(event))
            return false;
    }
    return true;
}

std::size_t keyMonitors() { return monitors.size(); }

} // namespace tarvik::recorder

using namespace tarvik;
using namespace tarvik::recorder;

NSApplication* NSApp;
NSNotificationName const NSApplicationDidChangeScreenParametersNotification = @"NSApplicationDidChangeScreenParameters";

@implementation NSApplication
+ (NSApplication*)sharedApplication {
    NSApp = sharedObject<NSApplication>();
    return NSApp;
}
- (NSAppearance*)effectiveAppearance {
    return sharedObject<NSAppearance>();
}
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    desk().policy = policy;
    return YES;
}
- (void)activateIgnoringOtherApps:(BOOL)flag {
    desk().activations += flag ? 1 : 0;
}
- (void)terminate:(id)sender {
    (void)sender;
    ++desk().terminations;
}
RECORDED_VALUE(id, delegate, setDelegate)
@end

@implementation NSEvent
+ (NSEvent*)eventWithCGEvent:(CGEventRef)event {
    NSEvent* made = [[[NSEvent alloc] init] autorelease];
    put(made, "directionInverted", BOOL(sim::object<sim::Event>(event).data.directionInverted));
    return made;
}
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent* (^)(NSEvent*))block {
    if (mask != 1ULL << 10)
        fatal("a monitor of more than key presses");
    NSObject* token = [[[NSObject alloc] init] autorelease];
    monitors.push_back({Strong(token), copiedBlock(block)});
    return token;
}
+ (void)removeMonitor:(id)token {
    if (std::erase_if(monitors, [&](const Monitor& m) { return m.token.get() == token; }) != 1)
        fatal("a monitor is removed that is none");
}
- (unsigned short)keyCode {
    return value<unsigned short>(self, "keyCode");
}
- (NSEventModifierFlags)modifierFlags {
    return value<NSEventModifierFlags>(self, "modifierFlags");
}
- (BOOL)isDirectionInvertedFromDevice {
    return value<BOOL>(self, "directionInverted");
}
@end

@implementation NSRunningApplication
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)process {
    return applicationOf(process);
}
- (pid_t)processIdentifier {
    return value<Application>(self, "application").process;
}
- (NSString*)bundleIdentifier {
    return optionalString(value<Application>(self, "application").identifier);
}
- (NSString*)localizedName {
    return optionalString(value<Application>(self, "application").name);
}
- (NSApplicationActivationPolicy)activationPolicy {
    return value<Application>(self, "application").policy;
}
@end

NSNotificationName const NSWorkspaceDidWakeNotification = @"NSWorkspaceDidWake";
NSNotificationName const NSWorkspaceSessionDidBecomeActiveNotification = @"NSWorkspaceSessionDidBecomeActive";
NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification =
    @"NSWorkspaceAccessibilityDisplayOptionsDidChange";

/// The workspace has a centre of its own.
@interface WorkspaceNotificationCenter : NSNotificationCenter
@end
@implementation WorkspaceNotificationCenter
@end

@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
    return sharedObject<NSWorkspace>();
}
- (NSNotificationCenter*)notificationCenter {
    return sharedObject<WorkspaceNotificationCenter>();
}
- (NSRunningApplication*)frontmostApplication {
    return applicationOf(desk().frontmost);
}
- (NSArray*)runningApplications {
    std::vector<id> made;
    for (const auto& application : desk().applications)
        made.push_back(makeApplication(application));
    return makeArray(made);
}
- (BOOL)accessibilityDisplayShouldReduceMotion {
    return desk().reducesMotion;
}
- (BOOL)openURL:(NSURL*)url {
    desk().openedUrls.emplace_back([[url absoluteString] UTF8String]);
    return YES;
}
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier {
    const auto found = desk().installed.find([identifier UTF8String]);
    return found == desk().installed.end() ? nil : [NSURL fileURLWithPath:makeString(found->second)];
}
- (NSImage*)iconForFile:(NSString*)path {
    (void)path;
    return [[[NSImage alloc] init] autorelease];
}
@end
