#include "platform/linux/x11/x11_keyboards.h"

#include <X11/Xatom.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

#include <algorithm>

namespace tarvik {
namespace {

struct FreeInfo {
    void operator()(XIDeviceInfo* info) const { XIFreeDeviceInfo(info); }
};
using DeviceInfo = std::unique_ptr<XIDeviceInfo, FreeInfo>;

struct FreeState {
    void operator()(XDeviceState* state) const { XFreeDeviceState(state); }
};

int keySource(const XIDeviceInfo& device) {
    for (int i = 0; i < device.num_classes; ++i) {
        if (device.classes[i]->type == XIKeyClass)
            return device.classes[i]->sourceid;
    }
    return 0;
}

/// The server marks the devices on which it makes the events of programs.
bool isXTest(const X11Connection& x, int device) {
    unsigned char* data = nullptr;
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    if (XIGetProperty(x.display(), device, x.atoms().xtestDevice, 0, 1, False, XA_INTEGER, &type, &format, &count,
                      &left, &data) != Success)
        return false;
    const bool marked = format == 8 && count == 1 && data[0] != 0;
    XFree(data);
    return marked;
}

} // namespace

std::shared_ptr<const X11Keyboard> X11Keyboard::open(const X11Connection& x, int id) {
    auto* device = XOpenDevice(x.display(), static_cast<XID>(id));
    return device ? std::shared_ptr<const X11Keyboard>(new X11Keyboard(x, id, device)) : nullptr;
}

X11Keyboard::~X11Keyboard() { XCloseDevice(x_.display(), device_); }

bool X11Keyboard::isDown(std::uint8_t keyCode) const {
    const std::unique_ptr<XDeviceState, FreeState> state(XQueryDeviceState(x_.display(), device_));
    const auto* data = state ? state->data : nullptr;
    for (int i = 0; data && i < state->num_classes; ++i) {
        if (data->c_class == KeyClass) {
            const auto* keys = reinterpret_cast<const XKeyState*>(data);
            return keys->keys[keyCode / 8] >> keyCode % 8 & 1;
        }
        data = reinterpret_cast<const XInputClass*>(reinterpret_cast<const char*>(data) + data->length);
    }
    return false;
}

void X11Keyboard::fake(std::uint8_t keyCode, bool down) const {
    XTestFakeDeviceKeyEvent(x_.display(), device_, keyCode, down ? True : False, nullptr, 0, CurrentTime);
}

X11Keyboards findX11Keyboards(const X11Connection& x, X11KnownKeyboards& known) {
    X11Keyboards found;
    int count = 0;
    const DeviceInfo devices(XIQueryDevice(x.display(), XIAllDevices, &count));
    const auto* first = devices.get();
    const auto* last = first + (devices ? count : 0);
    const auto* session = std::find_if(first, last, [](const auto& device) { return device.use == XIMasterKeyboard; });
    if (session == last)
        return found;
    for (const auto* device = first; device != last; ++device) {
        if (device->use != XISlaveKeyboard || device->attachment != session->deviceid || !device->enabled)
            continue;
        found.ids.push_back(device->deviceid);
    }
    const auto nameOf = [&](int id) -> std::string {
        return std::find_if(first, last, [id](const auto& device) { return device.deviceid == id; })->name;
    };
    const auto real = std::stable_partition(found.ids.begin(), found.ids.end(), [&](int id) {
        const auto [mark, isNew] = known.areXTest.try_emplace({id, nameOf(id)});
        if (isNew)
            mark->second = isXTest(x, id);
        return !mark->second;
    });
    const auto lastUsed = std::find(found.ids.begin(), real, keySource(*session));
    if (lastUsed != real)
        found.inUse = *lastUsed;
    else if (!found.ids.empty())
        found.inUse = found.ids.front();
    if (found.inUse)
        found.nameInUse = nameOf(found.inUse);
    return found;
}

} // namespace tarvik
