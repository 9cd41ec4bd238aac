#include "platform/linux/x11/x11_error_trap.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace tarvik {
namespace {

struct ActiveTraps {
    std::mutex mutex;
    std::vector<X11ErrorTrap*> traps;
};

ActiveTraps& active() {
    static auto& traps = *new ActiveTraps; // errors may still arrive while the process ends
    return traps;
}

} // namespace

struct X11ErrorTrap::Recorder {
    static int record(Display* display, XErrorEvent* error) {
        const std::lock_guard lock(active().mutex);
        for (auto* trap : active().traps) {
            if (trap->display_ == display && error->serial >= trap->firstRequest_ && trap->code_ == Success)
                trap->code_ = error->error_code;
        }
        return 0;
    }
};

X11ErrorTrap::X11ErrorTrap(Display* display) : display_(display), firstRequest_(NextRequest(display)) {
    const std::lock_guard lock(active().mutex);
    active().traps.push_back(this);
}

X11ErrorTrap::~X11ErrorTrap() {
    const std::lock_guard lock(active().mutex);
    std::erase(active().traps, this);
}

int X11ErrorTrap::sync() {
    XSync(display_, False);
    const std::lock_guard lock(active().mutex);
    return code_;
}

void installX11ErrorHandlers() {
    XSetErrorHandler(&X11ErrorTrap::Recorder::record);
    // What becomes of the process is the business of each display's exit handler, which Xlib calls next.
    XSetIOErrorHandler([](Display*) { return 0; });
}

} // namespace tarvik
