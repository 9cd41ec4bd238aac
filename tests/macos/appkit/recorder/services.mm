// The registry of login items, and the framework of updates.
#include "macos/appkit/recorder/desk.h"
#include "macos/appkit/recorder/sparkle.h"

#import <ServiceManagement/ServiceManagement.h>

using namespace tarvik::recorder;

@implementation SMAppService
+ (SMAppService*)mainAppService {
    return sharedObject<SMAppService>();
}
- (SMAppServiceStatus)status {
    return desk().loginItems.status;
}
- (BOOL)change:(SMAppServiceStatus)status error:(NSError**)error {
    if (const auto& refusal = desk().loginItems.refusal) {
        *error = makeError(*refusal);
        return NO;
    }
    desk().loginItems.status = status;
    return YES;
}
- (BOOL)registerAndReturnError:(NSError**)error {
    return [self change:SMAppServiceStatusEnabled error:error];
}
- (BOOL)unregisterAndReturnError:(NSError**)error {
    return [self change:SMAppServiceStatusNotRegistered error:error];
}
@end

@implementation SPUUpdater
RECORDED_VALUE(BOOL, automaticallyChecksForUpdates, setAutomaticallyChecksForUpdates)
RECORDED_STRONG(NSDate*, lastUpdateCheckDate, setLastUpdateCheckDate)
@end

@implementation SPUStandardUpdaterController
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id<SPUStandardUserDriverDelegate>)userDriverDelegate {
    put(self, "started", startUpdater);
    put<id>(self, "updaterDelegate", updaterDelegate);
    put<id>(self, "userDriverDelegate", userDriverDelegate);
    put(self, "updater", Strong([[[SPUUpdater alloc] init] autorelease]));
    return self;
}
- (SPUUpdater*)updater {
    return (SPUUpdater*)value<Strong>(self, "updater").get();
}
- (void)checkForUpdates:(id)sender {
    put(self, "checks", value<int>(self, "checks") + (sender ? 0 : 1));
}
@end
