// What the updates need of the Sparkle framework. It is looked for in the bundle when the program runs, so that a
// program without it builds from the same sources.
#pragma once

#import <Foundation/Foundation.h>

@interface SPUUpdater : NSObject
@property(nonatomic) BOOL automaticallyChecksForUpdates;
@property(nonatomic, readonly, copy) NSDate* lastUpdateCheckDate;
@end

@protocol SPUStandardUserDriverDelegate <NSObject>
@optional
@property(nonatomic, readonly) BOOL supportsGentleScheduledUpdateReminders;
@end

@interface SPUStandardUpdaterController : NSObject
/// Does not hold the delegates.
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id<SPUStandardUserDriverDelegate>)userDriverDelegate;
@property(nonatomic, readonly) SPUUpdater* updater;
- (void)checkForUpdates:(id)sender;
@end
