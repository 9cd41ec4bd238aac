#include "platform/linux/x11/x11_property.h"

#include "platform/linux/common/text.h"
#include "support/printable.h"

#include <X11/Xatom.h>

#include <algorithm>
#include <memory>

namespace tarvik {
namespace {

struct FreeX {
    void operator()(unsigned char* data) const { XFree(data); }
};

struct Property {
    std::unique_ptr<unsigned char, FreeX> data;
    Atom type = 0;
    int format = 0;
    std::size_t count = 0;
};

/// At most `bytes` bytes on the wire, rounded up to a multiple of four.
Property read(const X11Connection& x, XWindow window, Atom property, Atom type, std::size_t bytes) {
    Property result;
    unsigned char* data = nullptr;
    unsigned long count = 0;
    unsigned long left = 0;
    const auto units = static_cast<long>((bytes + 3) / 4);
    if (XGetWindowProperty(x.display(), window, property, 0, units, False, type, &result.type, &result.format, &count,
                           &left, &data) != Success)
        return {};
    result.data.reset(data);
    result.count = data ? count : 0;
    return result;
}

std::string bytesOf(const X11Connection& x, XWindow window, Atom property) {
    const auto found = read(x, window, property, AnyPropertyType, maxPropertyText);
    if (found.format != 8 || found.count == 0)
        return {};
    std::string text(reinterpret_cast<const char*>(found.data.get()), found.count);
    return found.type == XA_STRING ? utf8FromLatin1(text) : text;
}

} // namespace

std::vector<unsigned long> readItems(const X11Connection& x, XWindow window, Atom property, Atom type,
                                     std::size_t limit) {
    const auto found = read(x, window, property, type, limit * 4);
    if (found.format != 32 || found.type != type)
        return {};
    // Xlib hands out 32-bit items as longs, whatever the size of a long, and extends their sign.
    const auto* items = reinterpret_cast<const unsigned long*>(found.data.get());
    std::vector<unsigned long> result(items, items + found.count);
    for (auto& item : result)
        item &= 0xFFFFFFFFUL;
    return result;
}

std::optional<unsigned long> readItem(const X11Connection& x, XWindow window, Atom property, Atom type) {
    const auto items = readItems(x, window, property, type, 1);
    return items.empty() ? std::nullopt : std::optional(items.front());
}

std::string readText(const X11Connection& x, XWindow window, Atom property) {
    return printable(bytesOf(x, window, property), maxPropertyText);
}

WmClass wmClassFrom(std::string_view value) {
    const auto end = std::min(value.find('\0'), value.size());
    const auto rest = value.substr(std::min(end + 1, value.size()));
    return {printable(value.substr(0, end), maxPropertyText),
            printable(rest.substr(0, rest.find('\0')), maxPropertyText)};
}

WmClass readWmClass(const X11Connection& x, XWindow window) { return wmClassFrom(bytesOf(x, window, XA_WM_CLASS)); }

} // namespace tarvik
