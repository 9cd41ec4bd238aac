// Core Foundation: objects, texts, numbers, dictionaries.
#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFNotificationCenter.h>
#include <CoreFoundation/CFRunLoop.h>

extern "C" {

extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);

enum CFNumberType : CFIndex {
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberDoubleType = 13,
};
CFTypeID CFNumberGetTypeID(void);
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

typedef UInt32 CFStringEncoding;
enum CFStringBuiltInEncodings : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };
CFTypeID CFStringGetTypeID(void);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                         Boolean isExternalRepresentation, UInt8* buffer, CFIndex bufferSize, CFIndex* used);
CFMutableStringRef CFStringCreateMutable(CFAllocatorRef allocator, CFIndex maxLength);
void CFStringAppendCharacters(CFMutableStringRef string, const UniChar* units, CFIndex count);
void CFStringUppercase(CFMutableStringRef string, CFLocaleRef locale);

const UInt8* CFDataGetBytePtr(CFDataRef data);

typedef struct {
    CFIndex version;
    void* callbacks[5];
} CFDictionaryKeyCallBacks;
typedef struct {
    CFIndex version;
    void* callbacks[4];
} CFDictionaryValueCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);

} // extern "C"
