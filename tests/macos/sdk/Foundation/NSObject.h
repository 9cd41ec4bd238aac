// Foundation: the language's own types, and the root class.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CGGeometry.h>

#ifdef TARVIK_SIMULATED
#include <objc/objc.h>
#undef nil
#else
#if defined(__arm64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES __objc_yes
#define NO __objc_no
typedef struct objc_class* Class;
typedef struct objc_object {
    Class isa;
} * id;
typedef struct objc_selector* SEL;
#endif
#define nil nullptr

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
inline NSPoint NSMakePoint(CGFloat x, CGFloat y) { return {x, y}; }
inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) { return {{x, y}, {width, height}}; }
inline CGFloat NSMaxY(NSRect r) { return r.origin.y + r.size.height; }

@class NSString, NSDictionary;

@protocol NSObject
- (BOOL)isEqual:(id)object;
- (BOOL)isKindOfClass:(Class)wanted;
- (BOOL)respondsToSelector:(SEL)selector;
- (instancetype)retain;
- (void)release;
- (instancetype)autorelease;
@property(readonly, copy) NSString* description;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa;
}
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
- (void)dealloc;
@end

/// Key-value observing.
@interface NSObject (NSKeyValueObserving)
- (void)addObserver:(NSObject*)observer forKeyPath:(NSString*)path options:(NSUInteger)options context:(void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)path;
- (void)observeValueForKeyPath:(NSString*)path ofObject:(id)object change:(NSDictionary*)change context:(void*)context;
@end

@interface NSAutoreleasePool : NSObject
- (void)drain;
@end
