// AppKit: the application, its events, and the other applications.
#pragma once

#include <AppKit/NSGraphics.h>
#include <CoreGraphics/CGEvent.h>

@class NSApplication;

enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
};
extern "C" NSNotificationName const NSApplicationDidChangeScreenParametersNotification;

@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows;
@end
@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(weak) id<NSApplicationDelegate> delegate;
@property(readonly, strong) NSAppearance* effectiveAppearance;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (void)terminate:(id)sender;
@end
extern "C" NSApplication* NSApp;

typedef NSUInteger NSEventModifierFlags;
enum : NSUInteger {
    NSEventModifierFlagCapsLock = 1 << 16,
    NSEventModifierFlagCommand = 1 << 20,
};
typedef unsigned long long NSEventMask;
enum : unsigned long long { NSEventMaskKeyDown = 1ULL << 10 };
@interface NSEvent : NSObject
+ (NSEvent*)eventWithCGEvent:(CGEventRef)event;
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent* (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)monitor;
@property(readonly) unsigned short keyCode;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(getter=isDirectionInvertedFromDevice, readonly) BOOL directionInvertedFromDevice;
@end

@interface NSRunningApplication : NSObject
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)process;
@property(readonly) pid_t processIdentifier;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSString* localizedName;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@end

extern "C" NSNotificationName const NSWorkspaceDidWakeNotification;
extern "C" NSNotificationName const NSWorkspaceSessionDidBecomeActiveNotification;
extern "C" NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, strong) NSRunningApplication* frontmostApplication;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
- (BOOL)openURL:(NSURL*)url;
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier;
- (NSImage*)iconForFile:(NSString*)path;
@end
