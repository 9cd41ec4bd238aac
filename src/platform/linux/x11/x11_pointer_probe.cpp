#include "platform/linux/x11/x11_pointer_probe.h"

#include <X11/extensions/XInput2.h>

#include <thread>

namespace tarvik {
namespace {

constexpr auto retryInterval = std::chrono::microseconds(200);

} // namespace

X11PointerProbe::X11PointerProbe(Display* display, ::Window root)
    : display_(display)
    , hidden_(XCreateWindow(display, root, 0, 0, 1, 1, 0, 0, InputOnly, CopyFromParent, 0, nullptr)) {}

X11PointerProbe::~X11PointerProbe() { XDestroyWindow(display_, hidden_); }

void X11PointerProbe::waitUntilFree(int master, std::chrono::milliseconds longest) const {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    unsigned char bits[1] = {};
    XIEventMask mask{master, sizeof bits, bits};
    // The server looks for a grab of another client before it looks at the window.
    while (XIGrabDevice(display_, master, hidden_, CurrentTime, None, XIGrabModeAsync, XIGrabModeAsync, False, &mask) ==
               AlreadyGrabbed &&
           std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(retryInterval);
}

} // namespace tarvik
