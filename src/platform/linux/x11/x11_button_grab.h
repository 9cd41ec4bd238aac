// The grab through which the presses of the trigger button come to us first.
#pragma once

#include <X11/Xlib.h>

namespace tarvik {

/// On every master pointer and with whatever modifiers; a press freezes the pointer until XIAllowEvents. Only the grab
/// for all masters works: one on a slave cannot replay a press. Tap's thread.
class X11ButtonGrab {
public:
    X11ButtonGrab(Display* display, ::Window root) : display_(display), root_(root) {}

    /// Waits for the server's answer: false when another client holds the button. Everything that was requested before
    /// has happened when it returns.
    bool grab(int button);
    void release();

    bool held() const { return held_; }
    /// The button that is, or is to be, grabbed.
    int button() const { return button_; }

private:
    Display* const display_;
    const ::Window root_;
    int button_ = 0;
    bool held_ = false;
};

/// Which events the grabs of the tap report.
void selectHoldEvents(unsigned char* mask);
/// Bytes that such a mask takes.
inline constexpr int holdEventMaskSize = 4;

} // namespace tarvik
