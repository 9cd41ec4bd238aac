// Core Foundation: what every object has.
#pragma once

#include <cstddef>
#include <cstdint>
#include <sys/types.h>

extern "C" {

typedef unsigned char Boolean;
typedef std::uint8_t UInt8;
typedef std::uint16_t UInt16;
typedef std::uint32_t UInt32;
typedef std::int32_t SInt32;
typedef SInt32 OSStatus;
typedef UInt16 UniChar;
typedef unsigned long UniCharCount;
typedef UInt32 OptionBits;

typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef double CFTimeInterval;
typedef CFTimeInterval CFAbsoluteTime;
typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFData* CFDataRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFLocale* CFLocaleRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFString* CFStringRef;
typedef struct __CFString* CFMutableStringRef;

extern const CFAllocatorRef kCFAllocatorDefault;

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
Boolean CFEqual(CFTypeRef one, CFTypeRef other);
CFTypeID CFGetTypeID(CFTypeRef object);
CFStringRef CFCopyDescription(CFTypeRef object);

#ifdef TARVIK_SIMULATED
CFStringRef __CFStringMakeConstantString(const char* text);
#define CFSTR(text) __CFStringMakeConstantString("" text "")
#else
#define CFSTR(text) (reinterpret_cast<CFStringRef>(__builtin___CFStringMakeConstantString("" text "")))
#endif

} // extern "C"
