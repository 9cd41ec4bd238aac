#include "platform/support/pointer_client.h"

#include "platform/linux/x11/xi_event.h"
#include "platform/support/eventually.h"

#include <X11/Xutil.h>
#include <X11/extensions/XInput2.h>

#include <stdexcept>

namespace tarvik {
namespace {

/// The wheels of the desktop's mice.
constexpr int horizontalAxis = 2;
constexpr int verticalAxis = 3;

} // namespace

PointerClient::PointerClient(Protocol protocol, const Rect& frame)
    : x_(X11Connection::open()), opcode_(x_ ? xiOpcode(x_->display()).value_or(0) : 0) {
    if (opcode_ == 0)
        throw std::runtime_error("no display with XInput 2");
    const auto window =
        XCreateSimpleWindow(display(), x_->root(), static_cast<int>(frame.x), static_cast<int>(frame.y),
                            static_cast<unsigned>(frame.width), static_cast<unsigned>(frame.height), 0, 0, 0x336699);
    XSizeHints size = {};
    size.flags = USPosition | USSize;
    XSetWMNormalHints(display(), window, &size);
    if (protocol == Protocol::xi2) {
        unsigned char bits[4] = {};
        for (const int type : {XI_ButtonPress, XI_ButtonRelease, XI_Motion})
            XISetMask(bits, type);
        XIEventMask mask{XIAllMasterDevices, sizeof bits, bits};
        XISelectEvents(display(), window, &mask, 1);
        XSelectInput(display(), window, ExposureMask);
    } else {
        XSelectInput(display(), window, ButtonPressMask | ButtonReleaseMask | ExposureMask);
    }
    XMapRaised(display(), window);
    const bool exposed = eventually([&] {
        XEvent event;
        return XCheckTypedEvent(display(), Expose, &event) != 0;
    });
    if (!exposed)
        throw std::runtime_error("the window does not appear");
}

std::vector<PointerSeen> PointerClient::read() {
    std::vector<PointerSeen> all;
    while (XPending(display()) > 0) {
        XEvent event;
        XNextEvent(display(), &event);
        note(event, all);
    }
    return all;
}

void PointerClient::note(XEvent& event, std::vector<PointerSeen>& all) {
    using enum PointerSeen::What;
    if (event.type == ButtonPress || event.type == ButtonRelease) {
        const auto& button = event.xbutton;
        all.push_back({event.type == ButtonPress ? press : release,
                       static_cast<int>(button.button),
                       0,
                       {static_cast<double>(button.x_root), static_cast<double>(button.y_root)}});
    }
    auto& cookie = event.xcookie;
    if (event.type != GenericEvent || cookie.extension != opcode_ || !XGetEventData(display(), &cookie))
        return;
    const auto& x = *static_cast<const XIDeviceEvent*>(cookie.data);
    if (cookie.evtype == XI_Motion)
        noteScrolling(&x, all);
    else if (!(x.flags & XIPointerEmulated))
        all.push_back({cookie.evtype == XI_ButtonPress ? press : release, x.detail, x.sourceid, {x.root_x, x.root_y}});
    XFreeEventData(display(), &cookie);
}

void PointerClient::noteScrolling(const void* motion, std::vector<PointerSeen>& all) {
    const auto& x = *static_cast<const XIDeviceEvent*>(motion);
    const double* value = x.valuators.values;
    for (int axis = 0; axis < x.valuators.mask_len * 8; ++axis) {
        if (!XIMaskIsSet(x.valuators.mask, axis))
            continue;
        if (axis == verticalAxis || axis == horizontalAxis) {
            // The first value is only learned.
            const auto [known, isFirst] = axisValues_.emplace(std::pair(x.sourceid, axis), *value);
            const double change = *value - known->second;
            known->second = *value;
            if (!isFirst && change != 0)
                all.push_back(
                    {PointerSeen::What::scroll, 0, x.sourceid, {x.root_x, x.root_y}, change, axis == horizontalAxis});
        }
        ++value;
    }
}

std::string PointerClient::deviceName(int source) const {
    int count = 0;
    auto* info = XIQueryDevice(display(), source, &count);
    const std::string name = info ? info->name : "gone";
    if (info)
        XIFreeDeviceInfo(info);
    return name;
}

unsigned PointerClient::buttonsDown() const {
    XWindow root = None;
    XWindow child = None;
    int x = 0;
    int y = 0;
    unsigned state = 0;
    XQueryPointer(display(), x_->root(), &root, &child, &x, &y, &x, &y, &state);
    return state & (Button1Mask | Button2Mask | Button3Mask | Button4Mask | Button5Mask);
}

} // namespace tarvik
