// Foundation's values.
#include "macos/appkit/recorder/objects.h"

#include <cstdarg>
#include <cstdlib>

using namespace tarvik;
using namespace tarvik::recorder;

namespace tarvik::recorder {

NSString* makeString(const std::string& text) {
    return [[[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding] autorelease];
}

NSNumber* makeNumber(double number) {
    NSNumber* made = [[[NSNumber alloc] init] autorelease];
    put(made, "number", number);
    return made;
}

NSArray* makeArray(const std::vector<id>& elements) {
    NSMutableArray* made = [NSMutableArray array];
    for (id element : elements)
        [made addObject:element];
    return made;
}

NSDictionary* makeDictionary(const std::map<std::string, id>& entries) {
    NSDictionary* made = [[[NSDictionary alloc] init] autorelease];
    std::map<std::string, Strong> held;
    for (const auto& [key, object] : entries)
        held.emplace(key, object);
    put(made, "entries", held);
    return made;
}

NSDate* makeDate(double sinceEpoch) {
    NSDate* made = [[[NSDate alloc] init] autorelease];
    put(made, "time", sinceEpoch);
    return made;
}

NSError* makeError(const std::string& description) {
    NSError* made = [[[NSError alloc] init] autorelease];
    put(made, "description", Strong(makeString(description)));
    return made;
}

} // namespace tarvik::recorder

@implementation NSString
- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding {
    const std::string text(static_cast<const char*>(bytes), length);
    bool valid = encoding == NSUTF8StringEncoding;
    try {
        sim::utf16(text);
    } catch (const std::range_error&) {
        valid = false;
    }
    if (!valid) {
        [self release];
        return nil;
    }
    put(self, "text", text);
    return self;
}
- (const char*)UTF8String {
    return std::any_cast<std::string>(&record(self).values.at("text"))->c_str();
}
- (BOOL)isEqualToString:(NSString*)other {
    return std::string([self UTF8String]) == [other UTF8String];
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSString class]] && [self isEqualToString:object];
}
/// As the system takes it: a digit but 0, or a word that begins like yes or true.
- (BOOL)boolValue {
    return std::string("YyTt123456789").find([self UTF8String][0]) != std::string::npos && [self UTF8String][0] != 0;
}
- (NSString*)stringByAppendingPathComponent:(NSString*)component {
    return makeString(std::string([self UTF8String]) + "/" + [component UTF8String]);
}
@end

@implementation NSConstantString
- (const char*)UTF8String {
    return bytes_;
}
- (instancetype)retain {
    return self;
}
- (void)release {
}
- (instancetype)autorelease {
    return self;
}
@end

@implementation NSNumber
- (double)doubleValue {
    return value<double>(self, "number");
}
- (BOOL)boolValue {
    return [self doubleValue] != 0;
}
- (unsigned int)unsignedIntValue {
    return static_cast<unsigned int>([self doubleValue]);
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSNumber class]] && [self doubleValue] == [(NSNumber*)object doubleValue];
}
@end

@implementation NSScanner
+ (instancetype)scannerWithString:(NSString*)string {
    NSScanner* made = [[[NSScanner alloc] init] autorelease];
    put(made, "rest", std::string([string UTF8String]));
    return made;
}
- (BOOL)scanDouble:(double*)result {
    const auto rest = value<std::string>(self, "rest");
    char* end = nullptr;
    const double number = std::strtod(rest.c_str(), &end);
    if (end == rest.c_str())
        return NO;
    *result = number;
    put(self, "rest", std::string(end));
    return YES;
}
- (BOOL)isAtEnd {
    return value<std::string>(self, "rest").empty();
}
@end

@implementation NSData
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length {
    NSData* made = [[[NSData alloc] init] autorelease];
    put(made, "bytes", std::string(static_cast<const char*>(bytes), length));
    return made;
}
- (const void*)bytes {
    return std::any_cast<std::string>(&record(self).values.at("bytes"))->data();
}
- (NSUInteger)length {
    return value<std::string>(self, "bytes").size();
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSData class]] &&
           value<std::string>(self, "bytes") == value<std::string>(object, "bytes");
}
@end

@implementation NSDate
- (NSTimeInterval)timeIntervalSince1970 {
    return value<double>(self, "time");
}
@end

@implementation NSError
- (NSString*)description {
    return (NSString*)value<Strong>(self, "description").get();
}
@end

@implementation NSArray
+ (instancetype)arrayWithObjects:(id)first, ... {
    NSMutableArray* made = [NSMutableArray array];
    va_list more;
    va_start(more, first);
    for (id object = first; object; object = va_arg(more, id))
        [made addObject:object];
    va_end(more);
    return made;
}
- (NSUInteger)count {
    return value<std::vector<Strong>>(self, "elements").size();
}
- (id)objectAtIndex:(NSUInteger)index {
    return value<std::vector<Strong>>(self, "elements").at(index).get();
}
- (id)firstObject {
    return [self count] == 0 ? nil : [self objectAtIndex:0];
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state objects:(id*)buffer count:(NSUInteger)length {
    static unsigned long unchanged;
    const auto elements = value<std::vector<Strong>>(self, "elements");
    NSUInteger count = 0;
    while (count < length && state->state < elements.size())
        buffer[count++] = elements[state->state++].get();
    state->itemsPtr = buffer;
    state->mutationsPtr = &unchanged;
    return count;
}
@end

@implementation NSMutableArray
+ (instancetype)array {
    NSMutableArray* made = [[[NSMutableArray alloc] init] autorelease];
    put(made, "elements", std::vector<Strong>());
    return made;
}
- (void)addObject:(id)object {
    if (!object)
        fatal("nil in an array");
    auto elements = value<std::vector<Strong>>(self, "elements");
    elements.emplace_back(object);
    put(self, "elements", std::move(elements));
}
@end

@implementation NSDictionary
- (id)objectForKey:(NSString*)key {
    const auto entries = value<std::map<std::string, Strong>>(self, "entries");
    const auto found = entries.find([key UTF8String]);
    return found == entries.end() ? nil : found->second.get();
}
@end
