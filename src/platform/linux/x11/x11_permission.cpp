#include "platform/linux/x11/x11_permission.h"

#include "platform/linux/x11/x11_connection.h"

#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

#include <utility>

namespace tarvik {
namespace {

std::string missingOn(Display* display) {
    int opcode = 0;
    int event = 0;
    int error = 0;
    int major = 2;
    int minor = 2;
    if (!XQueryExtension(display, "XInputExtension", &opcode, &event, &error) ||
        XIQueryVersion(display, &major, &minor) != Success || major < 2 || (major == 2 && minor < 2))
        return "XInput 2.2";
    if (!XTestQueryExtension(display, &event, &error, &major, &minor))
        return "XTEST";
    if (XQueryExtension(display, "XWAYLAND", &opcode, &event, &error))
        return "an X11 session (this is Wayland)";
    return {};
}

std::string missing() {
    const auto connection = X11Connection::open();
    return connection ? missingOn(connection->display()) : "a display";
}

} // namespace

X11Permission::X11Permission(LogSink& log, std::function<void()> openGuide)
    : missing_(missing()), openGuide_(std::move(openGuide)) {
    if (!missing_.empty())
        log.write("gestures need " + missing_);
}

} // namespace tarvik
