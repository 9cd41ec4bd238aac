// Foundation: what a program asks of the system.
#pragma once

#include <Foundation/NSValues.h>

extern "C" {
void NSLog(NSString* format, ...);
NSString* NSHomeDirectory(void);
Class NSClassFromString(NSString* name);
}

typedef NSString* NSNotificationName;
@interface NSNotification : NSObject
@end

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (id)addObserverForName:(NSNotificationName)name
                  object:(id)sender
                   queue:(NSOperationQueue*)queue
              usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

typedef std::uint64_t NSActivityOptions;
enum : std::uint64_t {
    NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00FFFFFFULL & ~(1ULL << 20),
    NSActivityLatencyCritical = 0xFF00000000ULL,
};
@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
- (id)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
@end

@interface NSURL : NSObject
+ (instancetype)URLWithString:(NSString*)string;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@property(readonly, copy) NSString* path;
@property(readonly, copy) NSString* absoluteString;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
+ (instancetype)bundleWithPath:(NSString*)path;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSString* privateFrameworksPath;
- (id)objectForInfoDictionaryKey:(NSString*)key;
- (BOOL)load;
@end

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (NSString*)displayNameAtPath:(NSString*)path;
@end

extern "C" NSNotificationName const NSUserDefaultsDidChangeNotification;
@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (id)objectForKey:(NSString*)key;
- (NSString*)stringForKey:(NSString*)key;
- (NSArray<NSString*>*)stringArrayForKey:(NSString*)key;
- (NSData*)dataForKey:(NSString*)key;
- (void)setObject:(id)value forKey:(NSString*)key;
- (void)setBool:(BOOL)value forKey:(NSString*)key;
- (void)setDouble:(double)value forKey:(NSString*)key;
@end
