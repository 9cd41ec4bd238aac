#import "platform/macos/ns_text.h"

namespace tarvik {

NSString* nsString(std::string_view utf8) {
    NSString* string = [[NSString alloc] initWithBytes:utf8.data() length:utf8.size() encoding:NSUTF8StringEncoding];
    return string ? [string autorelease] : @"";
}

std::string text(NSString* string) { return optionalText(string).value_or(""); }

std::optional<std::string> optionalText(NSString* string) {
    const char* utf8 = [string UTF8String];
    return utf8 ? std::optional<std::string>(utf8) : std::nullopt;
}

} // namespace tarvik
