#import "platform/macos/appkit_key_monitor.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace tarvik {

void AppKitKeyMonitor::start(std::function<void(TypedKey)> handler) {
    stop();
    @autoreleasepool {
        monitor_ =
            ObjcRef<id>::retain([NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                                      handler:^NSEvent*(NSEvent* event) {
                                                                        // A copy: the handler may end the monitor, and
                                                                        // with it this block.
                                                                        const auto run = handler;
                                                                        run({[event keyCode], [event modifierFlags]});
                                                                        return nil;
                                                                      }]);
    }
}

void AppKitKeyMonitor::stop() {
    if (id monitor = monitor_)
        [NSEvent removeMonitor:monitor];
    monitor_ = {};
}

} // namespace tarvik
