#import "platform/macos/scroll_direction.h"

#import <AppKit/AppKit.h>

namespace tarvik {

bool isDirectionInvertedFromDevice(CGEventRef wheelEvent) {
    @autoreleasepool {
        return [[NSEvent eventWithCGEvent:wheelEvent] isDirectionInvertedFromDevice];
    }
}

} // namespace tarvik
