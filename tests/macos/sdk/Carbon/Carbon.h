// Carbon: text input sources and keyboard layouts.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

extern "C" {

typedef struct __TISInputSource* TISInputSourceRef;
typedef struct UCKeyboardLayout UCKeyboardLayout;
enum { kUCKeyActionDown = 0, kUCKeyActionUp = 1, kUCKeyActionAutoKey = 2, kUCKeyActionDisplay = 3 };

extern const CFStringRef kTISPropertyUnicodeKeyLayoutData;
extern const CFStringRef kTISNotifySelectedKeyboardInputSourceChanged;
TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource(void);
void* TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef key);
UInt8 LMGetKbdType(void);
OSStatus UCKeyTranslate(const UCKeyboardLayout* layout, UInt16 keyCode, UInt16 keyAction, UInt32 modifierState,
                        UInt32 keyboardType, OptionBits options, UInt32* deadKeyState, UniCharCount maxCount,
                        UniCharCount* count, UniChar* units);

} // extern "C"
