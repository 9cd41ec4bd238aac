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

std::pair<CfRef<CFTypeRef>, AXError> AxElement::read(CFStringRef attribute) const {
    CfRef<CFTypeRef> value;
    const auto error = AXUIElementCopyAttributeValue(element_.get(), attribute, value.out());
    return {std::move(value), error};
}

std::optional<AxElement> AxElement::readElement(CFStringRef attribute) const {
    auto [value, error] = read(attribute);
    if (error != kAXErrorSuccess || !value || CFGetTypeID(value.get()) != AXUIElementGetTypeID())
        return std::nullopt;
    return AxElement(std::move(value).as<AXUIElementRef>());
}

std::string AxElement::describe(CFStringRef attribute) const {
    const auto [value, error] = read(attribute);
    if (error != kAXErrorSuccess || !value)
        return "err" + std::to_string(static_cast<int>(error));
    return description(value.get());
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
