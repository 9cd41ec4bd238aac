#include "platform/macos/ax_windows.h"

#include "platform/macos/ax_element.h"

#include <utility>

namespace tarvik {
namespace {

// The names of the attributes; full screen has no public constant.
const CFStringRef role = CFSTR("AXRole");
const CFStringRef windowRole = CFSTR("AXWindow");
const CFStringRef window = CFSTR("AXWindow");
const CFStringRef focusedWindow = CFSTR("AXFocusedWindow");
const CFStringRef minimized = CFSTR("AXMinimized");
const CFStringRef fullScreen = CFSTR("AXFullScreen");
const CFStringRef subrole = CFSTR("AXSubrole");
const CFStringRef position = CFSTR("AXPosition");
const CFStringRef size = CFSTR("AXSize");

std::optional<bool> number(CFTypeRef value) {
    if (CFGetTypeID(value) == CFBooleanGetTypeID())
        return CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0;
    double number = 0;
    if (CFGetTypeID(value) == CFNumberGetTypeID() &&
        CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &number))
        return number != 0;
    return std::nullopt;
}

/// A value of the accessibility service's own kinds (point, size).
template <class T> std::optional<T> geometry(const AxElement& element, CFStringRef attribute, AXValueType type) {
    const auto reading = element.read(attribute);
    T result = {};
    if (!reading || CFGetTypeID(reading.value.get()) != AXValueGetTypeID() ||
        !AXValueGetValue(static_cast<AXValueRef>(reading.value.get()), type, &result))
        return std::nullopt;
    return result;
}

class AxWindow final : public Window {
public:
    AxWindow(AxElement element, const SessionApplications& applications)
        : element_(std::move(element)), applications_(applications) {}

    int minimize() override { return element_.write(minimized, true); }

    std::optional<bool> isFullScreen() const override {
        const auto reading = element_.read(fullScreen);
        return reading ? number(reading.value.get()) : std::nullopt;
    }

    int setFullScreen(bool on) override { return element_.write(fullScreen, on); }

    std::optional<Rect> frame() const override {
        const auto origin = geometry<CGPoint>(element_, position, kAXValueTypeCGPoint);
        const auto extent = geometry<CGSize>(element_, size, kAXValueTypeCGSize);
        if (!origin || !extent)
            return std::nullopt;
        return Rect{origin->x, origin->y, extent->width, extent->height};
    }

    std::string describe() const override {
        const auto process = element_.process();
        const auto name = applications_.localizedName(process);
        return "[" + name.value_or("pid " + std::to_string(process)) + "] role=" + element_.describe(role) +
               " subrole=" + element_.describe(subrole) + " minimized=" + element_.describe(minimized) +
               " settable=" + (element_.isSettable(minimized) ? "true" : "false") +
               " fullscreen=" + element_.describe(fullScreen);
    }

private:
    AxElement element_;
    const SessionApplications& applications_;
};

/// The window that the element is, or lies in.
std::optional<AxElement> windowOf(AxElement element) {
    const auto reading = element.read(role);
    if (reading && CFEqual(reading.value.get(), windowRole))
        return element;
    return element.readElement(window);
}

} // namespace

std::unique_ptr<Window> AxWindows::targetWindow(std::optional<Point> point) {
    std::optional<AxElement> found;
    if (point) {
        if (auto element = AxElement::systemWide().elementAt(point->x, point->y))
            found = windowOf(*std::move(element));
    }
    if (!found) {
        if (const auto process = applications_.frontmostProcess())
            found = AxElement::application(*process).readElement(focusedWindow);
    }
    return found ? std::make_unique<AxWindow>(*std::move(found), applications_) : nullptr;
}

} // namespace tarvik
