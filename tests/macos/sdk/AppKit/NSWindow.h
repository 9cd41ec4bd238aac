// AppKit: views, windows, panels.
#pragma once

#include <AppKit/NSGraphics.h>
#include <QuartzCore/QuartzCore.h>

@interface NSView : NSObject
- (instancetype)initWithFrame:(NSRect)frame;
@property NSRect frame;
@property BOOL wantsLayer;
@property(strong) CALayer* layer;
@property(getter=isHidden) BOOL hidden;
- (void)addSubview:(NSView*)view;
- (void)setFrameOrigin:(NSPoint)origin;
@end

enum NSVisualEffectMaterial : NSInteger { NSVisualEffectMaterialHUDWindow = 13 };
enum NSVisualEffectBlendingMode : NSInteger {
    NSVisualEffectBlendingModeBehindWindow = 0,
    NSVisualEffectBlendingModeWithinWindow = 1,
};
enum NSVisualEffectState : NSInteger {
    NSVisualEffectStateFollowsWindowActiveState = 0,
    NSVisualEffectStateActive = 1,
    NSVisualEffectStateInactive = 2,
};
@interface NSVisualEffectView : NSView
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@end

@interface NSTextField : NSView
+ (instancetype)labelWithString:(NSString*)string;
@property(copy) NSString* stringValue;
@property(strong) NSFont* font;
@property(copy) NSColor* textColor;
- (void)sizeToFit;
@end

typedef NSInteger NSWindowLevel;
#define NSScreenSaverWindowLevel 1000
typedef NSUInteger NSWindowStyleMask;
enum : NSUInteger { NSWindowStyleMaskNonactivatingPanel = 1 << 7 };
enum NSBackingStoreType : NSUInteger { NSBackingStoreBuffered = 2 };
typedef NSUInteger NSWindowCollectionBehavior;
enum : NSUInteger {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};
@interface NSWindow : NSObject
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag;
@property(readonly) NSRect frame;
@property(readonly) CGFloat backingScaleFactor;
@property(readonly) NSWindowStyleMask styleMask;
@property(getter=isOpaque) BOOL opaque;
@property(copy) NSColor* backgroundColor;
@property BOOL hasShadow;
@property BOOL ignoresMouseEvents;
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property BOOL hidesOnDeactivate;
@property(strong) NSView* contentView;
@property(getter=isVisible, readonly) BOOL visible;
- (void)setFrame:(NSRect)frame display:(BOOL)display;
- (void)orderFrontRegardless;
- (void)orderOut:(id)sender;
@end

@interface NSPanel : NSWindow
@end
