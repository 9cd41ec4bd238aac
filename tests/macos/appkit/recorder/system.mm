// What a program asks of the system: bundles, files, preferences, activities, the log.
#include "macos/appkit/recorder/desk.h"

#include <objc/runtime.h>

#include <cstdarg>

using namespace tarvik::recorder;

NSNotificationName const NSUserDefaultsDidChangeNotification = @"NSUserDefaultsDidChangeNotification";

NSString* NSHomeDirectory(void) { return makeString("/Users/tester"); }

/// Only the one format that takes a text as it is.
void NSLog(NSString* format, ...) {
    if (![format isEqualToString:@"%@"])
        fatal("a text that is used as a format");
    va_list arguments;
    va_start(arguments, format);
    desk().systemLog.emplace_back([va_arg(arguments, NSString*) UTF8String]);
    va_end(arguments);
}

/// The updater's classes are there once their framework is loaded.
Class NSClassFromString(NSString* name) {
    return desk().sparkleLoaded ? (Class)objc_getClass([name UTF8String]) : (Class)nil;
}

@implementation NSURL
+ (instancetype)URLWithString:(NSString*)string {
    NSURL* made = [[[NSURL alloc] init] autorelease];
    put(made, "string", Strong(string));
    return made;
}
+ (NSURL*)fileURLWithPath:(NSString*)path {
    NSURL* made = [self URLWithString:makeString(std::string("file://") + [path UTF8String])];
    put(made, "path", Strong(path));
    return made;
}
- (NSString*)path {
    return (NSString*)value<Strong>(self, "path").get();
}
- (NSString*)absoluteString {
    return (NSString*)value<Strong>(self, "string").get();
}
@end

@implementation NSBundle
+ (NSBundle*)mainBundle {
    return sharedObject<NSBundle>();
}
+ (instancetype)bundleWithPath:(NSString*)path {
    if (!desk().frameworks.contains([path UTF8String]))
        return nil;
    NSBundle* made = [[[NSBundle alloc] init] autorelease];
    return made;
}
- (NSString*)bundleIdentifier {
    const auto& identifier = desk().bundleIdentifier;
    return identifier ? makeString(*identifier) : nil;
}
- (NSString*)privateFrameworksPath {
    return makeString("/Applications/Tarvik.app/Contents/Frameworks");
}
- (id)objectForInfoDictionaryKey:(NSString*)key {
    const auto found = desk().info.find([key UTF8String]);
    return found == desk().info.end() ? nil : makeString(found->second);
}
- (BOOL)load {
    desk().sparkleLoaded = true;
    return YES;
}
@end

@implementation NSFileManager
+ (NSFileManager*)defaultManager {
    return sharedObject<NSFileManager>();
}
- (BOOL)fileExistsAtPath:(NSString*)path {
    return desk().files.contains([path UTF8String]);
}
/// The last part without its extension, as the user sees it.
- (NSString*)displayNameAtPath:(NSString*)path {
    const std::string whole = [path UTF8String];
    const auto name = whole.substr(whole.rfind('/') + 1);
    return makeString(name.substr(0, name.rfind('.')));
}
@end

/// What an activity lasts as long as.
@interface ActivityToken : NSObject
@end

@implementation ActivityToken
- (void)dealloc {
    desk().activities.at(value<std::size_t>(self, "index")).running = false;
    [super dealloc];
}
@end

@implementation NSProcessInfo
+ (NSProcessInfo*)processInfo {
    return sharedObject<NSProcessInfo>();
}
- (id)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason {
    ActivityToken* token = [[[ActivityToken alloc] init] autorelease];
    put(token, "index", desk().activities.size());
    desk().activities.push_back({options, [reason UTF8String], true});
    return token;
}
@end

@implementation NSUserDefaults
+ (NSUserDefaults*)standardUserDefaults {
    return sharedObject<NSUserDefaults>();
}
- (id)objectForKey:(NSString*)key {
    const auto found = desk().defaults.find([key UTF8String]);
    return found == desk().defaults.end() ? nil : found->second.get();
}
- (NSString*)stringForKey:(NSString*)key {
    id object = [self objectForKey:key];
    if ([object isKindOfClass:[NSNumber class]])
        return makeString(std::to_string([object doubleValue]));
    return [object isKindOfClass:[NSString class]] ? object : nil;
}
- (NSArray*)stringArrayForKey:(NSString*)key {
    id object = [self objectForKey:key];
    if (![object isKindOfClass:[NSArray class]])
        return nil;
    for (id element in (NSArray*)object) {
        if (![element isKindOfClass:[NSString class]])
            return nil;
    }
    return object;
}
- (NSData*)dataForKey:(NSString*)key {
    id object = [self objectForKey:key];
    return [object isKindOfClass:[NSData class]] ? object : nil;
}
- (void)setObject:(id)object forKey:(NSString*)key {
    desk().defaults[[key UTF8String]] = Strong(object);
    post([NSNotificationCenter defaultCenter], NSUserDefaultsDidChangeNotification);
}
- (void)setBool:(BOOL)flag forKey:(NSString*)key {
    [self setObject:makeNumber(flag ? 1 : 0) forKey:key];
}
- (void)setDouble:(double)number forKey:(NSString*)key {
    [self setObject:makeNumber(number) forKey:key];
}
@end
