// The desktop's devices, as a hand would use them.
#pragma once

#include <string>

namespace tarvik {

/// Speaks the line protocol of scripts/virtual-desktop (TARVIK_INPUT). Each call returns once the X server has the
/// event.
class DesktopInput {
public:
    DesktopInput();
    ~DesktopInput();
    DesktopInput(const DesktopInput&) = delete;
    DesktopInput& operator=(const DesktopInput&) = delete;

    /// For example "keyboard press 56" (kernel codes) or "mouse moveto 100 100". Throws when the desktop refuses it.
    void operator()(const std::string& line);

private:
    int socket_;
};

} // namespace tarvik
