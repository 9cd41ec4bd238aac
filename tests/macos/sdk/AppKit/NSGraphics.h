// AppKit: colours, fonts, images, appearances, screens.
#pragma once

#include <CoreGraphics/CGDrawing.h>
#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

@interface NSColorSpace : NSObject
@property(class, readonly, strong) NSColorSpace* sRGBColorSpace;
@end

extern "C" NSNotificationName const NSSystemColorsDidChangeNotification;
@interface NSColor : NSObject
@property(class, readonly, strong) NSColor* clearColor;
@property(class, readonly, strong) NSColor* blackColor;
@property(class, readonly, strong) NSColor* labelColor;
@property(class, readonly, strong) NSColor* controlAccentColor;
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha;
- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space;
@property(readonly) CGFloat redComponent;
@property(readonly) CGFloat greenComponent;
@property(readonly) CGFloat blueComponent;
@property(readonly) CGColorRef CGColor;
@end

typedef CGFloat NSFontWeight;
extern "C" const NSFontWeight NSFontWeightSemibold;
@interface NSFont : NSObject
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description;
// A property that C++ could not name.
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)flag;
- (CGImageRef)CGImageForProposedRect:(NSRect*)rect context:(id)context hints:(NSDictionary*)hints;
@end

typedef NSString* NSAppearanceName;
extern "C" NSAppearanceName const NSAppearanceNameAqua;
extern "C" NSAppearanceName const NSAppearanceNameDarkAqua;
@interface NSAppearance : NSObject
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names;
@end

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@property(readonly, copy) NSDictionary* deviceDescription;
@end
