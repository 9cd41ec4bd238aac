// The interfaces of other applications.
#include "macos/sim/world.h"

#include <cmath>

namespace tarvik::sim {
namespace {

constexpr std::size_t systemWide = static_cast<std::size_t>(-1);
/// What the system waits where nothing else was said.
constexpr float systemTimeout = 6;

struct Element : Object {
    explicit Element(std::size_t n) : Object(elementType), node(n) {}
    const std::size_t node;
    float timeout = systemTimeout;
};

struct GeometryValue : Object {
    explicit GeometryValue(CGPoint p) : Object(axValueType), kind(kAXValueTypeCGPoint), point(p) {}
    explicit GeometryValue(CGSize s) : Object(axValueType), kind(kAXValueTypeCGSize), size(s) {}
    const AXValueType kind;
    const CGPoint point = {};
    const CGSize size = {};
};

struct MakeReference {
    CFTypeRef operator()(bool value) const { return CFRetain(value ? kCFBooleanTrue : kCFBooleanFalse); }
    CFTypeRef operator()(double value) const { return new Number(value); }
    CFTypeRef operator()(const std::string& value) const { return new String(utf16(value)); }
    CFTypeRef operator()(AxNode::Link link) const { return new Element(link.node); }
    CFTypeRef operator()(CGPoint value) const { return new GeometryValue(value); }
    CFTypeRef operator()(CGSize value) const { return new GeometryValue(value); }
    CFTypeRef operator()(AXError) const { return nullptr; }
};

AxNode& node(const Element& element) { return world().nodes.at(element.node); }

Element& called(AXUIElementRef reference, const std::string& what) {
    auto& element = object<Element>(reference);
    world().axCalls.push_back({what, element.timeout});
    return element;
}

bool contains(const CGRect& area, double x, double y) {
    return x >= area.origin.x && y >= area.origin.y && x < area.origin.x + area.size.width &&
           y < area.origin.y + area.size.height;
}

} // namespace
} // namespace tarvik::sim

using namespace tarvik::sim;

extern "C" {

CFTypeID AXUIElementGetTypeID(void) { return elementType; }
AXUIElementRef AXUIElementCreateSystemWide(void) { return create<Element, AXUIElementRef>(systemWide); }
AXUIElementRef AXUIElementCreateApplication(pid_t process) {
    return create<Element, AXUIElementRef>(world().applications.at(process));
}
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) {
    object<Element>(element).timeout = seconds;
    return kAXErrorSuccess;
}

AXError AXUIElementCopyElementAtPosition(AXUIElementRef application, float x, float y, AXUIElementRef* found) {
    if (called(application, "element at").node != systemWide)
        fatal("only the system-wide element is asked for places");
    if (!world().trusted)
        return kAXErrorAPIDisabled;
    for (std::size_t i = 0; i < world().nodes.size(); ++i) {
        if (contains(world().nodes[i].area, x, y)) {
            *found = create<Element, AXUIElementRef>(i);
            return kAXErrorSuccess;
        }
    }
    return kAXErrorNoValue;
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value) {
    const auto name = textOf(attribute);
    const auto& attributes = node(called(element, "read " + name)).attributes;
    const auto found = attributes.find(name);
    if (!world().trusted)
        return kAXErrorAPIDisabled;
    if (found == attributes.end())
        return kAXErrorAttributeUnsupported;
    if (const auto* error = std::get_if<AXError>(&found->second))
        return *error;
    const auto made = std::visit(MakeReference(), found->second);
    *value = made;
    return kAXErrorSuccess;
}

AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value) {
    const auto name = textOf(attribute);
    const bool on = object<Bool>(value).value;
    auto& target = node(called(element, "write " + name + (on ? " true" : " false")));
    if (!world().trusted)
        return kAXErrorAPIDisabled;
    if (const auto error = target.writeErrors.find(name); error != target.writeErrors.end())
        return error->second;
    target.attributes[name] = on;
    return kAXErrorSuccess;
}

AXError AXUIElementIsAttributeSettable(AXUIElementRef element, CFStringRef attribute, Boolean* settable) {
    const auto name = textOf(attribute);
    const auto& answers = node(called(element, "settable " + name)).settable;
    const auto found = answers.find(name);
    if (found == answers.end())
        return kAXErrorAttributeUnsupported;
    // A question that fails may leave anything behind.
    *settable = !std::holds_alternative<bool>(found->second) || std::get<bool>(found->second);
    const auto* error = std::get_if<AXError>(&found->second);
    return error ? *error : kAXErrorSuccess;
}

AXError AXUIElementGetPid(AXUIElementRef element, pid_t* process) {
    *process = node(object<Element>(element)).process;
    return kAXErrorSuccess;
}

CFTypeID AXValueGetTypeID(void) { return axValueType; }
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result) {
    const auto& geometry = object<GeometryValue>(value);
    if (geometry.kind != type)
        return false;
    if (type == kAXValueTypeCGPoint)
        *static_cast<CGPoint*>(result) = geometry.point;
    else
        *static_cast<CGSize*>(result) = geometry.size;
    return true;
}

} // extern "C"
