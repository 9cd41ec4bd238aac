#include "platform/linux/x11/x11_frontmost.h"

#include "platform/linux/x11/x11_applications.h"

#include <utility>

namespace tarvik {

X11Frontmost::X11Frontmost(std::shared_ptr<const DesktopEntries> entries) : entries_(std::move(entries)) {}

void X11Frontmost::watch(const X11Connection& x) {
    ewmh_ = std::make_unique<X11Ewmh>(x);
    XSelectInput(x.display(), x.root(), PropertyChangeMask);
    read();
}

void X11Frontmost::handle(const XEvent& event) {
    const auto& x = ewmh_->connection();
    if (event.type != PropertyNotify || event.xproperty.atom != x.atoms().activeWindow)
        return;
    // What is read is the newest state, so this stands for all that wait: a program that changes it without end must
    // not keep presses waiting. Those that come meanwhile are left, or there would be no end here either.
    XEvent older;
    for (int waiting = XQLength(x.display()); waiting > 0; --waiting) {
        if (!XCheckTypedWindowEvent(x.display(), x.root(), PropertyNotify, &older))
            break;
    }
    read();
}

void X11Frontmost::read() {
    const auto window = ewmh_->activeWindow();
    application_ = window ? applicationId(ewmh_->connection(), *window, *entries_) : std::nullopt;
}

} // namespace tarvik
