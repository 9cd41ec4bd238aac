#import "platform/macos/appkit_screens.h"

#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>

#include <utility>

namespace tarvik {
namespace {

/// 0, which is no display, when the screen does not say.
CGDirectDisplayID display(NSScreen* screen) {
    id number = [[screen deviceDescription] objectForKey:@"NSScreenNumber"];
    return [number isKindOfClass:[NSNumber class]] ? [number unsignedIntValue] : 0;
}

} // namespace

AppKitScreens::AppKitScreens()
    : observation_([NSNotificationCenter defaultCenter], NSApplicationDidChangeScreenParametersNotification, [this] {
        read();
        if (changed_)
            changed_();
    }) {
    read();
}

std::vector<Screen> AppKitScreens::screens() const {
    const std::lock_guard lock(mutex_);
    return screens_;
}

void AppKitScreens::onChange(std::function<void()> handler) { changed_ = std::move(handler); }

/// The display's own bounds have their origin at the top left of the main display, as event locations have it; the
/// frames of the application framework begin at its bottom left.
void AppKitScreens::read() {
    std::vector<Screen> found;
    @autoreleasepool {
        for (NSScreen* screen in [NSScreen screens]) {
            const auto bounds = CGDisplayBounds(display(screen));
            found.push_back({{bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height}, 1});
        }
    }
    const std::lock_guard lock(mutex_);
    screens_ = std::move(found);
}

} // namespace tarvik
