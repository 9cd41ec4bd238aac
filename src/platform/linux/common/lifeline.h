// The line over which the tap shows its watchdog that it is alive.
#pragma once

#include <optional>
#include <sys/types.h>
#include <utility>

namespace tarvik {

/// One end of a pair of sockets. An empty one has nobody at its other end. Nothing here ever waits.
class Lifeline {
public:
    Lifeline() = default;
    explicit Lifeline(int descriptor) : descriptor_(descriptor) {}
    ~Lifeline() { close(); }
    Lifeline(Lifeline&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    Lifeline& operator=(Lifeline&& other) noexcept;

    /// The tap's end, and the watchdog's; nothing when the system has no more descriptors.
    static std::optional<std::pair<Lifeline, Lifeline>> pair();

    /// For `poll`, which passes over that of an empty line. Closed by `exec`.
    int descriptor() const { return descriptor_; }
    bool open() const { return descriptor_ >= 0; }
    void close();

    /// Tap's thread, when the line is readable: gives the sign of life that was asked for, if one was. The line is
    /// closed when the watchdog has gone.
    bool answer();

    /// Watchdog: asks for a sign of life. Not again before it came.
    void ask();
    /// Watchdog, when the line is readable: whether the sign has come. The line is closed when the tap has ended.
    bool sign();
    /// The process that has made the line.
    pid_t maker() const;

private:
    void send();
    /// False when nothing was there.
    bool receive();

    int descriptor_ = -1;
};

} // namespace tarvik
