// The tap's events, read ahead: giving a click back needs to know what has happened since.
#pragma once

#include "platform/linux/x11/xi_event.h"

#include <deque>
#include <functional>
#include <utility>

namespace tarvik {

/// Tap's thread.
class XiQueue {
public:
    /// `other` gets every event that is not of the X Input Extension, when it is read.
    XiQueue(Display* display, int opcode, std::function<void(const XEvent&)> other)
        : display_(display), opcode_(opcode), other_(std::move(other)) {}

    /// Takes over everything that the server has sent. Waits for nothing.
    void pull();

    bool empty() const { return events_.empty(); }
    XiEvent pop() {
        const auto event = events_.front();
        events_.pop_front();
        return event;
    }
    /// Whether a device has come, gone, or got another pointer, by what has been read but not popped.
    bool tellsOfDevices() const;
    /// What has been read but not popped, oldest first.
    const std::deque<XiEvent>& waiting() const { return events_; }

private:
    Display* const display_;
    const int opcode_;
    const std::function<void(const XEvent&)> other_;
    std::deque<XiEvent> events_;
};

} // namespace tarvik
