// Application Services: Core Graphics and the accessibility interface.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

extern "C" {

typedef const struct __AXUIElement* AXUIElementRef;
typedef const struct __AXValue* AXValueRef;
enum AXError : SInt32 {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
};
enum AXValueType : UInt32 { kAXValueTypeCGPoint = 1, kAXValueTypeCGSize = 2 };

extern const CFStringRef kAXTrustedCheckOptionPrompt;
Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);

CFTypeID AXUIElementGetTypeID(void);
AXUIElementRef AXUIElementCreateSystemWide(void);
AXUIElementRef AXUIElementCreateApplication(pid_t process);
AXError AXUIElementCopyElementAtPosition(AXUIElementRef application, float x, float y, AXUIElementRef* element);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value);
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value);
AXError AXUIElementIsAttributeSettable(AXUIElementRef element, CFStringRef attribute, Boolean* settable);
AXError AXUIElementGetPid(AXUIElementRef element, pid_t* process);
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds);

CFTypeID AXValueGetTypeID(void);
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result);

} // extern "C"
