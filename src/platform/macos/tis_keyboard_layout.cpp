#include "platform/macos/tis_keyboard_layout.h"

#include "platform/macos/cf_ref.h"
#include "platform/macos/cf_text.h"

#include <Carbon/Carbon.h>

#include <utility>
#include <vector>

namespace tarvik {
namespace {

constexpr UniCharCount maxUnits = 4;
/// Virtual key codes are seven bits wide.
constexpr std::uint16_t keyCodeCount = 128;

/// What the key types without modifiers; empty where the layout has nothing or there is no layout.
std::vector<UniChar> unitsOf(std::uint16_t keyCode) {
    const auto source = CfRef<TISInputSourceRef>::adopt(TISCopyCurrentKeyboardLayoutInputSource());
    if (!source)
        return {};
    // Belongs to the source.
    const auto* data =
        static_cast<CFDataRef>(TISGetInputSourceProperty(source.get(), kTISPropertyUnicodeKeyLayoutData));
    if (!data)
        return {};
    const auto* layout = reinterpret_cast<const UCKeyboardLayout*>(CFDataGetBytePtr(data));
    UInt32 deadKeys = 0;
    UniChar units[maxUnits] = {};
    UniCharCount count = 0;
    const auto status =
        UCKeyTranslate(layout, keyCode, kUCKeyActionDisplay, 0, LMGetKbdType(), 0, &deadKeys, maxUnits, &count, units);
    return status == 0 ? std::vector<UniChar>(units, units + count) : std::vector<UniChar>();
}

} // namespace

TisKeyboardLayout::TisKeyboardLayout(std::function<void()> changed) : changed_(std::move(changed)) {
    const auto told = [](CFNotificationCenterRef, void* self, CFNotificationName, const void*, CFDictionaryRef) {
        static_cast<TisKeyboardLayout*>(self)->changed_();
    };
    CFNotificationCenterAddObserver(CFNotificationCenterGetDistributedCenter(), this, told,
                                    kTISNotifySelectedKeyboardInputSourceChanged, nullptr,
                                    CFNotificationSuspensionBehaviorDeliverImmediately);
}

TisKeyboardLayout::~TisKeyboardLayout() {
    CFNotificationCenterRemoveObserver(CFNotificationCenterGetDistributedCenter(), this,
                                       kTISNotifySelectedKeyboardInputSourceChanged, nullptr);
}

std::optional<std::string> TisKeyboardLayout::character(std::uint16_t keyCode) const {
    const auto units = unitsOf(keyCode);
    if (units.empty())
        return std::nullopt;
    const auto string = CfRef<CFMutableStringRef>::adopt(CFStringCreateMutable(kCFAllocatorDefault, 0));
    CFStringAppendCharacters(string.get(), units.data(), static_cast<CFIndex>(units.size()));
    CFStringUppercase(string.get(), nullptr);
    return text(string.get());
}

std::optional<std::uint16_t> TisKeyboardLayout::positionOf(char letter) const {
    const std::vector<UniChar> wanted = {static_cast<UniChar>(letter)};
    for (std::uint16_t keyCode = 0; keyCode < keyCodeCount; ++keyCode) {
        if (unitsOf(keyCode) == wanted)
            return keyCode;
    }
    return std::nullopt;
}

} // namespace tarvik
