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
    , root_(root)
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

std::optional<PointerState> X11PointerProbe::state(int master) const {
    PointerState result;
    ::Window root = 0;
    ::Window child = 0;
    Point inside;
    XIButtonState down{};
    XIModifierState modifiers{};
    XIGroupState group{};
    if (!XIQueryPointer(display_, master, root_, &root, &child, &result.location.x, &result.location.y, &inside.x,
                        &inside.y, &down, &modifiers, &group))
        return std::nullopt;
    for (int button = 0; button < down.mask_len * 8 && button < static_cast<int>(result.down.size()); ++button)
        result.down[static_cast<std::size_t>(button)] = XIMaskIsSet(down.mask, button) != 0;
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
