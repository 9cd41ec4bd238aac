#include "macos/sim/objects.h"

#include <codecvt>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <map>
#include <vector>

namespace tarvik::sim {
namespace {

int live = 0;

template <class T> T* constant(T* object) {
    object->immortal = true;
    --live;
    return object;
}

struct Dictionary : Object {
    Dictionary() : Object(dictionaryType) {}
    ~Dictionary() override {
        for (const auto& [key, value] : entries) {
            CFRelease(key);
            CFRelease(value);
        }
    }
    std::vector<std::pair<const void*, const void*>> entries;
};

using Converter = std::wstring_convert<std::codecvt_utf8_utf16<char16_t>, char16_t>;

} // namespace

void fatal(const std::string& fault) {
    std::fprintf(stderr, "simulated platform: %s\n", fault.c_str());
    std::abort();
}

Object::Object(TypeId t) : type(t) { ++live; }

Object::~Object() {
    if (!immortal)
        --live;
}

int liveObjects() { return live; }

std::u16string utf16(const std::string& utf8) { return Converter().from_bytes(utf8); }
std::string utf8(const std::u16string& utf16) { return Converter().to_bytes(utf16); }
std::string textOf(CFStringRef string) { return utf8(object<String>(string).units); }

} // namespace tarvik::sim

using namespace tarvik::sim;

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = reference<CFBooleanRef>(constant(new Bool(true)));
const CFBooleanRef kCFBooleanFalse = reference<CFBooleanRef>(constant(new Bool(false)));
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {};

CFTypeRef CFRetain(CFTypeRef reference) {
    ++object<Object>(reference).references;
    return reference;
}

void CFRelease(CFTypeRef reference) {
    auto& released = object<Object>(reference);
    if (!released.immortal && --released.references == 0)
        delete &released;
}

Boolean CFEqual(CFTypeRef one, CFTypeRef other) {
    if (CFGetTypeID(one) == stringType && CFGetTypeID(other) == stringType)
        return object<String>(one).units == object<String>(other).units;
    return one == other;
}

CFTypeID CFGetTypeID(CFTypeRef reference) { return object<Object>(reference).type; }

CFStringRef CFCopyDescription(CFTypeRef reference) {
    const auto* number = dynamic_cast<Number*>(&object<Object>(reference));
    return create<String, CFStringRef>(utf16(number ? "<number " + std::to_string(number->value) + ">" : "<object>"));
}

CFTypeID CFBooleanGetTypeID(void) { return booleanType; }
Boolean CFBooleanGetValue(CFBooleanRef boolean) { return object<Bool>(boolean).value; }

CFTypeID CFNumberGetTypeID(void) { return numberType; }
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    if (type != kCFNumberDoubleType)
        fatal("only floating numbers are simulated");
    *static_cast<double*>(value) = object<Number>(number).value;
    return true;
}

CFStringRef __CFStringMakeConstantString(const char* text) {
    static std::map<std::string, String*> constants;
    auto& string = constants[text];
    if (!string)
        string = constant(new String(utf16(text)));
    return reference<CFStringRef>(string);
}

CFTypeID CFStringGetTypeID(void) { return stringType; }
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count, CFStringEncoding encoding,
                                    Boolean) {
    if (encoding != kCFStringEncodingUTF8)
        fatal("only UTF-8 is simulated");
    return create<String, CFStringRef>(utf16({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)}));
}
CFIndex CFStringGetLength(CFStringRef string) { return static_cast<CFIndex>(object<String>(string).units.size()); }
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding, UInt8, Boolean, UInt8* buffer,
                         CFIndex size, CFIndex* used) {
    const auto bytes = utf8(object<String>(string).units.substr(static_cast<std::size_t>(range.location),
                                                                static_cast<std::size_t>(range.length)));
    if (buffer)
        bytes.copy(reinterpret_cast<char*>(buffer), static_cast<std::size_t>(size));
    if (used)
        *used = static_cast<CFIndex>(bytes.size());
    return range.length;
}
CFMutableStringRef CFStringCreateMutable(CFAllocatorRef, CFIndex) {
    return create<String, CFMutableStringRef>(std::u16string());
}
void CFStringAppendCharacters(CFMutableStringRef string, const UniChar* units, CFIndex count) {
    object<String>(string).units.append(units, units + count);
}
/// The letters of Latin-1.
void CFStringUppercase(CFMutableStringRef string, CFLocaleRef) {
    for (auto& unit : object<String>(string).units) {
        if ((unit >= u'a' && unit <= u'z') || (unit >= u'à' && unit <= u'þ' && unit != u'÷'))
            unit = static_cast<char16_t>(unit - 0x20);
    }
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    if (keyCallBacks != &kCFTypeDictionaryKeyCallBacks || valueCallBacks != &kCFTypeDictionaryValueCallBacks)
        fatal("a dictionary that does not retain what it holds");
    auto* dictionary = new Dictionary;
    for (CFIndex i = 0; i < count; ++i)
        dictionary->entries.emplace_back(CFRetain(keys[i]), CFRetain(values[i]));
    return reference<CFDictionaryRef>(dictionary);
}
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    for (const auto& [held, value] : object<Dictionary>(dictionary).entries) {
        if (CFEqual(held, key))
            return value;
    }
    return nullptr;
}

} // extern "C"
