#include "ports/platform.h"

#import "platform/macos/ns_text.h"

namespace tarvik {

/// Every user has the folder; where somebody took it away, the lines are lost.
std::filesystem::path logFile() {
    @autoreleasepool {
        return std::filesystem::path(text(NSHomeDirectory())) / "Library/Logs/Tarvik.log";
    }
}

} // namespace tarvik
