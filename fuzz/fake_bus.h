// A session bus that answers whatever the input says.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvik::fuzz {

/// Takes the place of the session's bus (DBUS_SESSION_BUS_ADDRESS): each call to any service is answered with a value
/// or an error made of the next bytes of the input. It is a process of its own, because the bus library connects and
/// serves on the same thread, and values reach the reader as they would from a stranger. To be made once, before any
/// thread; it ends with this process.
class FakeBus {
public:
    FakeBus();

    /// What the next calls are answered from; what is missing at the end is zero.
    void setInput(const std::uint8_t* data, std::size_t size);

    /// Memory that both processes see.
    struct Input;

private:
    Input* const input_;
};

} // namespace tarvik::fuzz
