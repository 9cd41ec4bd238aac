// The framework of updates, with what only it may set.
#pragma once

#import "platform/macos/sparkle.h"

@interface SPUUpdater (Recorded)
- (void)setLastUpdateCheckDate:(NSDate*)date;
@end
