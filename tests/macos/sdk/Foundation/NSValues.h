// Foundation: texts, numbers, collections, dates.
#pragma once

#include <Foundation/NSObject.h>

enum NSStringEncoding : NSUInteger { NSUTF8StringEncoding = 4 };
@interface NSString : NSObject
- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding;
@property(readonly) const char* UTF8String;
@property(readonly) BOOL boolValue;
- (BOOL)isEqualToString:(NSString*)other;
- (NSString*)stringByAppendingPathComponent:(NSString*)component;
@end

#ifdef TARVIK_SIMULATED
/// A literal, as the compiler lays it out.
@interface NSConstantString : NSString {
@public
    const char* bytes_;
    unsigned int length_;
}
@end
#else
@interface NSConstantString : NSString
@end
#endif

@interface NSNumber : NSObject
@property(readonly) BOOL boolValue;
@property(readonly) double doubleValue;
@property(readonly) unsigned int unsignedIntValue;
@end

@interface NSScanner : NSObject
+ (instancetype)scannerWithString:(NSString*)string;
- (BOOL)scanDouble:(double*)result;
@property(getter=isAtEnd, readonly) BOOL atEnd;
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
@property(readonly) const void* bytes;
@property(readonly) NSUInteger length;
@end

@interface NSDate : NSObject
@property(readonly) NSTimeInterval timeIntervalSince1970;
@end

@interface NSError : NSObject
@end

struct NSFastEnumerationState {
    unsigned long state;
    id* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
};

@interface NSArray<__covariant Element> : NSObject
+ (instancetype)arrayWithObjects:(Element)first, ...;
@property(readonly) NSUInteger count;
@property(readonly) Element firstObject;
- (Element)objectAtIndex:(NSUInteger)index;
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state objects:(id*)buffer count:(NSUInteger)length;
@end

@interface NSMutableArray<Element> : NSArray <Element>
+ (instancetype)array;
- (void)addObject:(Element)object;
@end

@interface NSDictionary<Key, Value> : NSObject
- (Value)objectForKey:(Key)key;
@end
