// The keyboard layout.
#include "macos/sim/world.h"

#include <Carbon/Carbon.h>

#include <algorithm>
#include <memory>
#include <sstream>

/// The layout's data, as the text input source hands it out.
struct UCKeyboardLayout {
    tarvik::sim::KeyLayout layout;
};

namespace tarvik::sim {
namespace {

struct Data : Object {
    explicit Data(const KeyLayout& layout) : Object(dataType), bytes(std::make_unique<UCKeyboardLayout>()) {
        bytes->layout = layout;
    }
    std::unique_ptr<UCKeyboardLayout> bytes;
};

/// Owns its properties: they end with it.
struct InputSource : Object {
    explicit InputSource(const KeyLayout& layout) : Object(inputSourceType), data(new Data(layout)) {}
    ~InputSource() override { CFRelease(data); }
    Data* const data;
};

constexpr UInt8 keyboardType = 91;

} // namespace
} // namespace tarvik::sim

using namespace tarvik::sim;

extern "C" {

const CFStringRef kTISPropertyUnicodeKeyLayoutData = CFSTR("TISPropertyUnicodeKeyLayoutData");
const CFStringRef kTISNotifySelectedKeyboardInputSourceChanged =
    CFSTR("com.apple.Carbon.TISNotifySelectedKeyboardInputSourceChanged");

TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource(void) {
    return world().layout ? create<InputSource, TISInputSourceRef>(*world().layout) : nullptr;
}
void* TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef key) {
    auto* data = object<InputSource>(source).data;
    return CFEqual(key, kTISPropertyUnicodeKeyLayoutData) && data->bytes->layout.hasData ? static_cast<Object*>(data)
                                                                                         : nullptr;
}
const UInt8* CFDataGetBytePtr(CFDataRef data) { return reinterpret_cast<const UInt8*>(object<Data>(data).bytes.get()); }
UInt8 LMGetKbdType(void) { return keyboardType; }

OSStatus UCKeyTranslate(const UCKeyboardLayout* layout, UInt16 keyCode, UInt16 keyAction, UInt32 modifierState,
                        UInt32 type, OptionBits options, UInt32* deadKeyState, UniCharCount maxCount,
                        UniCharCount* count, UniChar* units) {
    std::ostringstream call;
    call << keyCode << ' ' << keyAction << ' ' << modifierState << ' ' << type << ' ' << options << ' ' << *deadKeyState
         << ' ' << maxCount;
    world().keyTranslations.push_back(call.str());
    const auto found = layout->layout.keys.find(keyCode);
    const auto typed = found == layout->layout.keys.end() ? std::u16string() : found->second;
    *count = std::min<UniCharCount>(typed.size(), maxCount);
    std::copy_n(typed.begin(), *count, units);
    return layout->layout.status;
}

} // extern "C"
