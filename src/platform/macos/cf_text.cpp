#include "platform/macos/cf_text.h"

namespace tarvik {

std::string text(CFStringRef string) {
    const CFRange all = {0, CFStringGetLength(string)};
    CFIndex size = 0;
    CFStringGetBytes(string, all, kCFStringEncodingUTF8, '?', false, nullptr, 0, &size);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    CFStringGetBytes(string, all, kCFStringEncodingUTF8, '?', false, reinterpret_cast<UInt8*>(utf8.data()), size,
                     nullptr);
    return utf8;
}

CfRef<CFStringRef> cfString(std::string_view utf8) {
    return CfRef<CFStringRef>::adopt(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(utf8.data()),
                                static_cast<CFIndex>(utf8.size()), kCFStringEncodingUTF8, false));
}

} // namespace tarvik
