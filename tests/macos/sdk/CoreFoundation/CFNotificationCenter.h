// Core Foundation: notifications between processes.
#pragma once

#include <CoreFoundation/CFBase.h>

extern "C" {

typedef struct __CFNotificationCenter* CFNotificationCenterRef;
typedef CFStringRef CFNotificationName;
typedef void (*CFNotificationCallback)(CFNotificationCenterRef center, void* observer, CFNotificationName name,
                                       const void* object, CFDictionaryRef userInfo);
enum CFNotificationSuspensionBehavior : CFIndex {
    CFNotificationSuspensionBehaviorDrop = 1,
    CFNotificationSuspensionBehaviorCoalesce = 2,
    CFNotificationSuspensionBehaviorHold = 3,
    CFNotificationSuspensionBehaviorDeliverImmediately = 4,
};
CFNotificationCenterRef CFNotificationCenterGetDistributedCenter(void);
void CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void* observer,
                                     CFNotificationCallback callback, CFStringRef name, const void* object,
                                     CFNotificationSuspensionBehavior behavior);
void CFNotificationCenterRemoveObserver(CFNotificationCenterRef center, const void* observer, CFNotificationName name,
                                        const void* object);

} // extern "C"
