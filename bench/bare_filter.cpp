// The least that the X server allows: a client that takes the right button and does one thing, without an engine, a
// log, an overlay or settings. What Tarvik does is measured against it.
//
//   bare_filter click|replay|keys
//
// click gives every press back at its release, by the requests of docs/decisions/0001-giving-a-click-back.md without
// the look afterwards. replay refuses every press. keys sends Ctrl+R at every release. Prints a line when it is ready.
#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>

namespace {

constexpr int button = 3;
Display* display;
XIGrabModifiers anyModifiers = {static_cast<int>(XIAnyModifier), 0};

void grab() {
    unsigned char bits[4] = {};
    for (const int event : {XI_ButtonPress, XI_ButtonRelease, XI_Motion})
        XISetMask(bits, event);
    XIEventMask mask = {XIAllMasterDevices, sizeof bits, bits};
    XIGrabButton(display, XIAllMasterDevices, button, DefaultRootWindow(display), None, XIGrabModeSync, XIGrabModeAsync,
                 False, &mask, 1, &anyModifiers);
}

/// What tells afterwards whether a click was given.
void watchRawEvents(bool on) {
    unsigned char bits[4] = {};
    if (on) {
        XISetMask(bits, XI_RawButtonPress);
        XISetMask(bits, XI_RawButtonRelease);
    }
    XIEventMask mask = {XIAllDevices, sizeof bits, bits};
    XISelectEvents(display, DefaultRootWindow(display), &mask, 1);
}

XDevice* opened(int source) {
    static std::map<int, XDevice*> devices;
    auto& device = devices[source];
    return device ? device : device = XOpenDevice(display, static_cast<XID>(source));
}

void giveBack(const XIDeviceEvent& release) {
    int place[2] = {static_cast<int>(release.root_x), static_cast<int>(release.root_y)};
    auto* device = opened(release.sourceid);
    XIUngrabButton(display, XIAllMasterDevices, button, DefaultRootWindow(display), 1, &anyModifiers);
    XTestFakeDeviceButtonEvent(display, device, button, True, place, 2, CurrentTime);
    XTestFakeDeviceButtonEvent(display, device, button, False, nullptr, 0, CurrentTime);
    grab();
    watchRawEvents(false);
}

void sendKeys() {
    static const unsigned control = XKeysymToKeycode(display, XK_Control_L);
    static const unsigned letter = XKeysymToKeycode(display, XK_r);
    for (const auto& [key, down] : {std::pair(control, True), {letter, True}, {letter, False}, {control, False}})
        XTestFakeKeyEvent(display, key, down, CurrentTime);
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view task = argc == 2 ? argv[1] : "";
    display = XOpenDisplay(nullptr);
    int opcode = 0;
    int unused = 0;
    if (!display || !XQueryExtension(display, "XInputExtension", &opcode, &unused, &unused) ||
        !XTestQueryExtension(display, &unused, &unused, &unused, &unused) ||
        (task != "click" && task != "replay" && task != "keys"))
        return EXIT_FAILURE;
    grab();
    XSync(display, False);
    std::puts("ready");
    std::fflush(stdout);
    for (XEvent event;;) {
        XNextEvent(display, &event);
        if (event.type != GenericEvent || event.xcookie.extension != opcode || !XGetEventData(display, &event.xcookie))
            continue;
        const auto& seen = *static_cast<const XIDeviceEvent*>(event.xcookie.data);
        if (event.xcookie.evtype == XI_ButtonPress) {
            if (task == "click")
                watchRawEvents(true);
            XIAllowEvents(display, seen.deviceid, task == "replay" ? XIReplayDevice : XIAsyncDevice, seen.time);
            opened(seen.sourceid);
        } else if (event.xcookie.evtype == XI_ButtonRelease) {
            task == "keys" ? sendKeys() : giveBack(seen);
        }
        XFreeEventData(display, &event.xcookie);
        XFlush(display);
    }
}
