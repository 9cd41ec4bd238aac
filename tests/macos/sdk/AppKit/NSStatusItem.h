// AppKit: the menu bar.
#pragma once

#include <AppKit/NSWindow.h>

@class NSMenu;

typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;
@interface NSMenuItem : NSObject
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)keyEquivalent;
+ (NSMenuItem*)separatorItem;
@property(getter=isSeparatorItem, readonly) BOOL separatorItem;
@property(copy) NSString* title;
@property(copy) NSString* keyEquivalent;
@property(weak) id target;
@property SEL action;
@property NSInteger tag;
@property NSControlStateValue state;
@property(getter=isEnabled) BOOL enabled;
@end

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuNeedsUpdate:(NSMenu*)menu;
@end
@interface NSMenu : NSObject
@property(weak) id<NSMenuDelegate> delegate;
@property(readonly, copy) NSArray<NSMenuItem*>* itemArray;
- (void)addItem:(NSMenuItem*)item;
- (void)removeAllItems;
@end

@interface NSStatusBarButton : NSView
@property(strong) NSImage* image;
@property BOOL appearsDisabled;
@end
@interface NSStatusItem : NSObject
@property(readonly, strong) NSStatusBarButton* button;
@property(strong) NSMenu* menu;
@property CGFloat length;
@end
static const CGFloat NSSquareStatusItemLength = -2.0;
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end
