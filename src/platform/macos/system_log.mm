#import "platform/macos/system_log.h"

#import "platform/macos/ns_text.h"

namespace tarvik {

void SystemLog::write(std::string_view message) {
    @autoreleasepool {
        NSLog(@"%@", nsString(message));
    }
}

} // namespace tarvik
