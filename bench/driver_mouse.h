// A mouse of the private desktop without anything between it and the X server's driver.
#pragma once

namespace tarvik {

/// Speaks the inputtest driver's protocol (xf86-input-inputtest-protocol.h) and waits for no answer, so that it is as
/// quick as hardware. For desktops with --raw-input. One thread.
class DriverMouse {
public:
    /// `variable` of the environment names the socket. Throws when nothing listens there.
    explicit DriverMouse(const char* variable);
    ~DriverMouse();
    DriverMouse(const DriverMouse&) = delete;
    DriverMouse& operator=(const DriverMouse&) = delete;

    void button(int number, bool press);
    void moveBy(double dx, double dy);
    /// Notches downwards.
    void wheel(double notches);

private:
    void move(int firstAxis, double first, double second);
    void send(const void* message, unsigned long size);

    int socket_;
};

} // namespace tarvik
