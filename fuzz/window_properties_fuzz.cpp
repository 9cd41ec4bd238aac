// What other programs write into properties of windows: texts become short lines, numbers become sensible ones.
// The toolkit first: Xlib's macros would take its names away.
#include <QObject>

#include "platform/linux/common/text.h"
#include "platform/linux/x11/key_characters.h"
#include "platform/linux/x11/x11_desktop_grid.h"
#include "platform/linux/x11/x11_property.h"
#include "platform/linux/x11/x11_screens.h"
#include "require.h"
#include "support/printable.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace tarvik {
namespace {

using fuzz::isLine;
using fuzz::isText;
using fuzz::require;

void texts(std::string_view bytes) {
    const std::size_t limit = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.front());
    const auto line = printable(bytes, limit);
    require(isLine(line) && line.size() <= limit, "no line, or a long one");
    require(printable(line, limit) == line, "another line the second time");
    const auto whole = printable(bytes, bytes.size() * 3);
    require(whole.starts_with(line), "more than a cut");
    require(!isText(bytes) || whole.size() <= bytes.size(), "a text has grown");
    const auto wide = utf8FromLatin1(bytes);
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    require(isText(wide) &&
                std::count_if(wide.begin(), wide.end(), begins) == static_cast<std::ptrdiff_t>(bytes.size()),
            "other characters");
    const auto [instance, className] = wmClassFrom(bytes);
    require(isLine(instance) && isLine(className), "a class that is no line");
    require(instance.size() <= maxPropertyText && className.size() <= maxPropertyText, "a long class");
    require(className.empty() || bytes.find('\0') != bytes.npos, "a class out of nowhere");
}

std::vector<unsigned long> items(std::string_view bytes) {
    std::vector<unsigned long> result;
    for (; bytes.size() >= sizeof(std::uint32_t); bytes.remove_prefix(sizeof(std::uint32_t))) {
        std::uint32_t item = 0;
        std::memcpy(&item, bytes.data(), sizeof item);
        result.push_back(item);
    }
    return result;
}

void desktops(const std::vector<unsigned long>& items) {
    if (items.size() < 2)
        return;
    const auto current = static_cast<std::uint32_t>(items[0]);
    const auto count = static_cast<std::uint32_t>(items[1]);
    const auto layout = desktopLayoutFrom({items.begin() + 2, items.end()});
    for (const int step : {-1, 1}) {
        const auto next = neighbourDesktop(current, count, step, layout);
        require(!next || (*next < count && *next != current), "a neighbour that there is not");
        const auto back = next ? neighbourDesktop(*next, count, -step, layout) : std::nullopt;
        require(!back || *back == current, "the way back leads elsewhere");
    }
}

void scale(std::string_view bytes) {
    double ratio = 0;
    std::memcpy(&ratio, bytes.data(), std::min(bytes.size(), sizeof ratio));
    for (const bool told : {false, true}) {
        const auto units =
            x11UnitsPerPoint({.toolkitRatio = ratio, .toolkitWasTold = told, .resources = bytes, .gdkScale = bytes});
        require(units >= 1 && units <= 16, "a point of no sensible size");
    }
}

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tarvik;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    texts(bytes);
    const auto numbers = items(bytes);
    desktops(numbers);
    scale(bytes);
    for (const auto symbol : numbers) {
        const auto character = characterOf(static_cast<std::uint32_t>(symbol));
        require(!character || (!character->empty() && isLine(*character)), "a key without a character");
    }
    return 0;
}
