#include "platform/linux/common/lifeline.h"

#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>

namespace tarvik {
Lifeline& Lifeline::operator=(Lifeline&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

std::optional<std::pair<Lifeline, Lifeline>> Lifeline::pair() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        return std::nullopt;
    return std::pair(Lifeline(ends[0]), Lifeline(ends[1]));
}

void Lifeline::close() {
    if (open())
        ::close(std::exchange(descriptor_, -1));
}

bool Lifeline::answer() {
    if (!receive())
        return false;
    send();
    return true;
}

void Lifeline::ask() { send(); }

bool Lifeline::sign() { return receive(); }

pid_t Lifeline::maker() const {
    ucred maker{};
    socklen_t size = sizeof maker;
    return getsockopt(descriptor_, SOL_SOCKET, SO_PEERCRED, &maker, &size) == 0 ? maker.pid : 0;
}

void Lifeline::send() {
    // One question and one sign at a time: there is always room. That the other end has gone, the next look finds out.
    const char message = 0;
    [[maybe_unused]] const auto sent = ::send(descriptor_, &message, sizeof message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

bool Lifeline::receive() {
    char message = 0;
    const auto got = recv(descriptor_, &message, sizeof message, MSG_DONTWAIT);
    if (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR))
        close();
    return got > 0;
}

} // namespace tarvik
