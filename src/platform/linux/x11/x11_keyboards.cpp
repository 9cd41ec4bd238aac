#include "platform/linux/x11/x11_keyboards.h"

#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

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

} // namespace

std::shared_ptr<const X11Keyboard> X11Keyboard::open(const X11Connection& x, int id) {
    auto* device = XOpenDevice(x.display(), static_cast<XID>(id));
    return device ? std::shared_ptr<const X11Keyboard>(new X11Keyboard(x, id, device)) : nullptr;
}

X11Keyboard::~X11Keyboard() {
    XCloseDevice(x_.display(), device_);
}

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

X11Keyboards findX11Keyboards(const X11Connection& x) {
    X11Keyboards found;
    int pointer = 0;
    if (!XIGetClientPointer(x.display(), None, &pointer))
        return found;
    int count = 0;
    const DeviceInfo devices(XIQueryDevice(x.display(), XIAllDevices, &count));
    int keyboard = 0;
    for (int i = 0; devices && i < count; ++i) {
        if (devices.get()[i].deviceid == pointer)
            keyboard = devices.get()[i].attachment;
    }
    int lastUsed = 0;
    for (int i = 0; devices && i < count; ++i) {
        const auto& device = devices.get()[i];
        if (device.deviceid == keyboard)
            lastUsed = keySource(device);
        else if (device.use == XISlaveKeyboard && device.attachment == keyboard && device.enabled)
            found.ids.push_back(device.deviceid);
    }
    for (const int id : found.ids) {
        if (id == lastUsed)
            found.lastUsed = id;
    }
    return found;
}

} // namespace tarvik
