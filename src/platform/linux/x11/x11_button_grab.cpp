#include "platform/linux/x11/x11_button_grab.h"

#include "platform/linux/x11/x11_error_trap.h"

#include <X11/extensions/XInput2.h>

namespace tarvik {
namespace {

XIGrabModifiers anyModifiers() { return {static_cast<int>(XIAnyModifier), 0}; }

} // namespace

bool X11ButtonGrab::grab(int button) {
    button_ = button;
    const X11ErrorTrap trap(display_);
    unsigned char bits[holdEventMaskSize] = {};
    selectHoldEvents(bits);
    XIEventMask mask{XIAllMasterDevices, holdEventMaskSize, bits};
    auto modifiers = anyModifiers();
    // The keyboard goes on: only the pointer waits for our decision.
    held_ = XIGrabButton(display_, XIAllMasterDevices, button, root_, None, XIGrabModeSync, XIGrabModeAsync, False,
                         &mask, 1, &modifiers) == 0;
    return held_;
}

void X11ButtonGrab::release() {
    auto modifiers = anyModifiers();
    XIUngrabButton(display_, XIAllMasterDevices, button_, root_, 1, &modifiers);
    held_ = false;
}

void selectHoldEvents(unsigned char* mask) {
    XISetMask(mask, XI_ButtonPress);
    XISetMask(mask, XI_ButtonRelease);
    XISetMask(mask, XI_Motion);
}

} // namespace tarvik
