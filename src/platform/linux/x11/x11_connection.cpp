#include "platform/linux/x11/x11_connection.h"

#include "platform/linux/x11/x11_error_trap.h"

#include <utility>

namespace tarvik {

std::unique_ptr<X11Connection> X11Connection::open(std::function<void()> lost) {
    XInitThreads();
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return nullptr;
    installX11ErrorHandlers();
    return std::unique_ptr<X11Connection>(new X11Connection(display, std::move(lost)));
}

X11Connection::X11Connection(Display* display, std::function<void()> lost)
    : display_(display), root_(DefaultRootWindow(display)), atoms_(display), onLost_(std::move(lost)) {
    XSetIOErrorExitHandler(
        display_,
        [](Display*, void* self) {
            auto& connection = *static_cast<X11Connection*>(self);
            if (!connection.lost_.exchange(true) && connection.onLost_)
                connection.onLost_();
        },
        this);
}

X11Connection::~X11Connection() {
    lost_ = true; // a connection that breaks while it is being closed is no news
    XCloseDisplay(display_);
}

void X11Connection::discardEvents() const {
    while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
    }
}

} // namespace tarvik
