#include "platform/support/desktop_input.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace tarvik {

DesktopInput::DesktopInput() : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const char* path = std::getenv("TARVIK_INPUT");
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (!path || std::strlen(path) >= sizeof address.sun_path)
        throw std::runtime_error("not on a virtual desktop");
    std::strcpy(address.sun_path, path);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("the desktop's input cannot be reached");
}

DesktopInput::~DesktopInput() { close(socket_); }

void DesktopInput::operator()(const std::string& line) {
    const auto text = line + "\n";
    if (write(socket_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("the desktop has ended");
    std::string answer;
    // Fuzzers have a timer that interrupts.
    for (char c = 0; TEMP_FAILURE_RETRY(read(socket_, &c, 1)) == 1 && c != '\n';)
        answer += c;
    if (answer != "ok")
        throw std::runtime_error(line + ": " + answer);
}

} // namespace tarvik
