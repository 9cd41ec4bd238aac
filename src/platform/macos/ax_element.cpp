#include "platform/macos/ax_element.h"

#include "platform/macos/cf_text.h"

#include <utility>

namespace tarvik {
namespace {

/// Seconds.
constexpr float readTimeout = 0.25F;
constexpr float writeTimeout = 2;

/// As the application framework prints values: a Boolean is a number there.
std::string description(CFTypeRef value) {
    const auto type = CFGetTypeID(value);
    if (type == CFStringGetTypeID())
        return text(static_cast<CFStringRef>(value));
    if (type == CFBooleanGetTypeID())
        return CFBooleanGetValue(static_cast<CFBooleanRef>(value)) ? "1" : "0";
    const auto description = CfRef<CFStringRef>::adopt(CFCopyDescription(value));
    return description ? text(description.get()) : std::string();
}

} // namespace

AxElement::AxElement(CfRef<AXUIElementRef> element) : element_(std::move(element)) {
    AXUIElementSetMessagingTimeout(element_.get(), readTimeout);
}

AxElement AxElement::systemWide() { return AxElement(CfRef<AXUIElementRef>::adopt(AXUIElementCreateSystemWide())); }

AxElement AxElement::application(pid_t process) {
    return AxElement(CfRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(process)));
}

std::optional<AxElement> AxElement::elementAt(double x, double y) const {
    CfRef<AXUIElementRef> found;
    const auto error =
        AXUIElementCopyElementAtPosition(element_.get(), static_cast<float>(x), static_cast<float>(y), found.out());
    if (error != kAXErrorSuccess || !found)
        return std::nullopt;
    return AxElement(std::move(found));
}

AxReading AxElement::read(CFStringRef attribute) const {
    AxReading reading;
    reading.error = AXUIElementCopyAttributeValue(element_.get(), attribute, reading.value.out());
    return reading;
}

std::optional<AxElement> AxElement::readElement(CFStringRef attribute) const {
    auto reading = read(attribute);
    if (!reading || CFGetTypeID(reading.value.get()) != AXUIElementGetTypeID())
        return std::nullopt;
    return AxElement(std::move(reading.value).as<AXUIElementRef>());
}

std::string AxElement::describe(CFStringRef attribute) const {
    const auto reading = read(attribute);
    return reading ? description(reading.value.get()) : "err" + std::to_string(static_cast<int>(reading.error));
}

bool AxElement::isSettable(CFStringRef attribute) const {
    Boolean settable = false;
    return AXUIElementIsAttributeSettable(element_.get(), attribute, &settable) == kAXErrorSuccess && settable;
}

AXError AxElement::write(CFStringRef attribute, bool value) const {
    AXUIElementSetMessagingTimeout(element_.get(), writeTimeout);
    const auto error =
        AXUIElementSetAttributeValue(element_.get(), attribute, value ? kCFBooleanTrue : kCFBooleanFalse);
    AXUIElementSetMessagingTimeout(element_.get(), readTimeout);
    return error;
}

pid_t AxElement::process() const {
    pid_t process = 0;
    return AXUIElementGetPid(element_.get(), &process) == kAXErrorSuccess ? process : 0;
}

} // namespace tarvik
