#import "platform/macos/sparkle_update_channel.h"

/// The framework's user-driver delegate.
@interface TarvikUpdateReminders : NSObject <SPUStandardUserDriverDelegate>
@end

@implementation TarvikUpdateReminders
/// An agent has no window that an alert could belong to: what a scheduled check finds is shown without taking the
/// focus.
- (BOOL)supportsGentleScheduledUpdateReminders {
    return YES;
}
@end

namespace tarvik {
namespace {

/// nil when the framework is not in the bundle.
Class controllerClass() {
    NSString* path =
        [[[NSBundle mainBundle] privateFrameworksPath] stringByAppendingPathComponent:@"Sparkle.framework"];
    [[NSBundle bundleWithPath:path] load];
    return NSClassFromString(@"SPUStandardUpdaterController");
}

} // namespace

std::unique_ptr<SparkleUpdateChannel> SparkleUpdateChannel::make(LogSink& log) {
    @autoreleasepool {
        NSBundle* bundle = [NSBundle mainBundle];
        if (![bundle bundleIdentifier] || ![bundle objectForInfoDictionaryKey:@"SUFeedURL"])
            return nullptr;
        Class controller = controllerClass();
        if (!controller) {
            log.write("a feed of updates is configured, but Sparkle.framework is not in the bundle");
            return nullptr;
        }
        return std::unique_ptr<SparkleUpdateChannel>(new SparkleUpdateChannel(controller));
    }
}

SparkleUpdateChannel::SparkleUpdateChannel(Class controller)
    : reminders_(ObjcRef<TarvikUpdateReminders*>::adopt([[TarvikUpdateReminders alloc] init]))
    , controller_(ObjcRef<SPUStandardUpdaterController*>::adopt(
          [[controller alloc] initWithStartingUpdater:YES updaterDelegate:nil userDriverDelegate:reminders_]))
    , defaultsChanged_([NSNotificationCenter defaultCenter], NSUserDefaultsDidChangeNotification, [this] {
        if (changed_)
            changed_();
    }) {}

bool SparkleUpdateChannel::automaticallyChecksForUpdates() const {
    return [[controller_ updater] automaticallyChecksForUpdates];
}

void SparkleUpdateChannel::setAutomaticallyChecksForUpdates(bool on) {
    [[controller_ updater] setAutomaticallyChecksForUpdates:on];
}

std::optional<std::chrono::system_clock::time_point> SparkleUpdateChannel::lastUpdateCheckDate() const {
    @autoreleasepool {
        NSDate* date = [[controller_ updater] lastUpdateCheckDate];
        if (!date)
            return std::nullopt;
        const std::chrono::duration<double> sinceEpoch([date timeIntervalSince1970]);
        return std::chrono::system_clock::time_point(
            std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
    }
}

void SparkleUpdateChannel::checkForUpdates() { [controller_ checkForUpdates:nil]; }

} // namespace tarvik
