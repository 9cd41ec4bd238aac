#include "driver_mouse.h"

#include <cstdint>
#include <xorg/xf86-input-inputtest-protocol.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarvik {
namespace {

constexpr double notch = 120;

template <typename Message> Message message(xf86ITEventType type) {
    Message result = {};
    result.header = {sizeof result, type};
    return result;
}

} // namespace

DriverMouse::DriverMouse(const char* variable) : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const char* path = std::getenv(variable);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::size_t length = path ? std::strlen(path) : sizeof address.sun_path;
    if (length >= sizeof address.sun_path)
        throw std::runtime_error(std::string(variable) + " names no socket");
    std::memcpy(address.sun_path, path, length); // the rest is zeros
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error(std::string("nothing listens at ") + path);
    auto hello = message<xf86ITEventClientVersion>(XF86IT_EVENT_CLIENT_VERSION);
    hello.major = XF86IT_PROTOCOL_VERSION_MAJOR;
    hello.minor = XF86IT_PROTOCOL_VERSION_MINOR;
    send(&hello, sizeof hello);
    xf86ITResponseServerVersion answer = {};
    if (read(socket_, &answer, sizeof answer) != sizeof answer || answer.header.type != XF86IT_RESPONSE_SERVER_VERSION)
        throw std::runtime_error(std::string("no answer from ") + path);
}

DriverMouse::~DriverMouse() { close(socket_); }

void DriverMouse::button(int number, bool press) {
    auto event = message<xf86ITEventButton>(XF86IT_EVENT_BUTTON);
    event.button = number;
    event.is_press = press;
    send(&event, sizeof event);
}

void DriverMouse::moveBy(double dx, double dy) { move(0, dx, dy); }

void DriverMouse::wheel(double notches) { move(2, 0, notches * notch); }

void DriverMouse::move(int firstAxis, double first, double second) {
    auto event = message<xf86ITEventMotion>(XF86IT_EVENT_MOTION);
    auto& axes = event.valuators;
    axes.mask[0] = static_cast<std::uint8_t>(3U << firstAxis);
    axes.valuators[firstAxis] = first;
    axes.valuators[firstAxis + 1] = second;
    send(&event, sizeof event);
}

void DriverMouse::send(const void* message, unsigned long size) {
    if (write(socket_, message, size) != static_cast<ssize_t>(size))
        throw std::runtime_error("the X server has closed the device");
}

} // namespace tarvik
