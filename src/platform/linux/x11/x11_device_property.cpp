#include "platform/linux/x11/x11_device_property.h"

#include <X11/Xatom.h>
#include <X11/extensions/XInput2.h>

#include <memory>

namespace tarvik {
namespace {

/// More than any property that is asked for, in units of four bytes.
constexpr long longest = 256;

} // namespace

std::vector<unsigned char> readDeviceBytes(Display* display, int device, Atom property) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    if (property == None || XIGetProperty(display, device, property, 0, longest, False, XA_INTEGER, &type, &format,
                                          &count, &left, &data) != Success)
        return {};
    const auto release = [](unsigned char* bytes) { XFree(bytes); };
    const std::unique_ptr<unsigned char, decltype(release)> owner(data, release);
    if (type != XA_INTEGER || format != 8 || !data)
        return {};
    return {data, data + count};
}

void writeDeviceBytes(Display* display, int device, Atom property, const std::vector<unsigned char>& bytes) {
    auto data = bytes;
    XIChangeProperty(display, device, property, XA_INTEGER, 8, XIPropModeReplace, data.data(),
                     static_cast<int>(data.size()));
}

} // namespace tarvik
