#include "platform/linux/x11/x11_permission.h"

#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/xi_event.h"

#include <X11/extensions/XTest.h>

#include <utility>

namespace tarvik {
namespace {

std::string missing() {
    const auto connection = X11Connection::open();
    return connection ? missingOn(connection->display()) : "a display";
}

} // namespace

std::string missingOn(Display* display) {
    int code = 0;
    int event = 0;
    int error = 0;
    int major = 0;
    int minor = 0;
    if (XQueryExtension(display, "XWAYLAND", &code, &event, &error))
        return "an X11 session (this is Wayland)";
    if (!xiOpcode(display))
        return "XInput 2.2";
    if (!XTestQueryExtension(display, &event, &error, &major, &minor))
        return "XTEST";
    return {};
}

X11Permission::X11Permission(LogSink& log, std::function<void()> openGuide)
    : missing_(missing()), openGuide_(std::move(openGuide)) {
    if (!missing_.empty())
        log.write("gestures need " + missing_);
}

} // namespace tarvik
