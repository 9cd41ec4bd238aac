#include "platform/linux/x11/x11_pointer_probe.h"

#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace tarvik {
namespace {

constexpr std::chrono::microseconds firstPause(200);
constexpr std::chrono::microseconds longestPause(5000);

} // namespace

X11PointerProbe::X11PointerProbe(Display* display, ::Window root)
    : display_(display)
    , hidden_(XCreateWindow(display, root, 0, 0, 1, 1, 0, 0, InputOnly, CopyFromParent, 0, nullptr)) {}

X11PointerProbe::~X11PointerProbe() { XDestroyWindow(display_, hidden_); }

bool X11PointerProbe::waitUntilFree(int master, std::chrono::milliseconds longest) const {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    for (auto pause = firstPause; isTaken(master); pause = std::min(2 * pause, longestPause)) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

bool X11PointerProbe::isDown(int master, int button) const {
    ::Window root = 0;
    ::Window child = 0;
    double place[4] = {};
    XIButtonState down{};
    XIModifierState modifiers{};
    XIGroupState group{};
    if (!XIQueryPointer(display_, master, DefaultRootWindow(display_), &root, &child, &place[0], &place[1], &place[2],
                        &place[3], &down, &modifiers, &group))
        return false;
    const bool result = button < down.mask_len * 8 && XIMaskIsSet(down.mask, button) != 0;
    std::free(down.mask);
    return result;
}

bool X11PointerProbe::isTaken(int master) const {
    unsigned char bits[1] = {};
    XIEventMask mask{master, sizeof bits, bits};
    // The server looks for a grab of another client before it looks at the window.
    return XIGrabDevice(display_, master, hidden_, CurrentTime, None, XIGrabModeAsync, XIGrabModeAsync, False, &mask) ==
           AlreadyGrabbed;
}

} // namespace tarvik
