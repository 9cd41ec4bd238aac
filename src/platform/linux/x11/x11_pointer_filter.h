// The tap's decisions on the X server's events: which presses become holds, and what becomes of a hold.
#pragma once

#include "platform/linux/x11/x11_button_grab.h"
#include "platform/linux/x11/x11_click_return.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/x11_drag_start.h"
#include "platform/linux/x11/x11_hold_wheel.h"
#include "platform/linux/x11/x11_pointer_events.h"
#include "platform/linux/x11/x11_pointer_probe.h"
#include "platform/linux/x11/x11_wheel_pass.h"
#include "platform/linux/x11/x11_wheel_reversal.h"
#include "platform/linux/x11/xi_queue.h"
#include "ports/event_tap.h"
#include "ports/screens.h"
#include "support/log.h"

#include <chrono>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace tarvik {

/// Tap's thread. From the press of the trigger button to the release of the last button that went down meanwhile, all
/// pointer events come to us. The handler decides about the press and gets every movement, turn of the wheel and the
/// release; clicks of other buttons during a hold are handed to the application after it.
class X11PointerFilter {
public:
    struct Hooks {
        EventTap::Handler handler;
        /// Called before every event that is decided.
        std::function<void()> beforeEvent;
        /// Gets what is not of the X Input Extension.
        std::function<void(const XEvent&)> otherEvent;
    };

    X11PointerFilter(const X11Connection& x, int opcode, const Screens& screens, LogSink& log, Hooks hooks);
    /// Loses a hold, as if its button had never been pressed, and releases the grab.
    ~X11PointerFilter();
    X11PointerFilter(const X11PointerFilter&) = delete;
    X11PointerFilter& operator=(const X11PointerFilter&) = delete;

    /// Grabs the trigger button, or another one than before. False when another client holds it; may be called again.
    bool arm(TriggerButton trigger);
    /// The next `arm` asks for the button once more: another client may have got in front of us unnoticed.
    void renew() { renew_ = true; }
    bool armed() const { return grab_.held(); }
    /// Every event that has been read is dealt with.
    bool settled() const { return queue_.empty(); }
    /// No button that matters is held, and nothing waits to be given back.
    bool idle() const { return !hold_ && !clicks_.waiting(); }
    /// Reverses the wheel for as long as no button is held; only while idle. Put back at the end.
    void reverseWheel(WheelAxes axes) { reversal_.set(axes); }
    /// Deals with everything that has arrived, and with the time that the handler asked to be told.
    void process();
    /// How long there is nothing to do when nothing arrives; nothing: for ever.
    std::optional<std::chrono::milliseconds> timeLeft() const;

    /// The tap's operations, called from the handler.
    void post(const PointerEvent& event) { posted_.push_back(event); }
    void afterEvent(std::function<void()> task) { tasks_.push_back(std::move(task)); }
    void dropHold();

private:
    struct Hold {
        int source = 0;
        int master = 0;
        int button = 0;
        /// The handler knows the end of the hold; other buttons are still down.
        bool decided = false;
        Point location;
        /// Down before the press: not ours.
        XiButtons downBefore;
        /// Other buttons that went down during the hold, and the device of each.
        std::vector<std::pair<int, int>> others;
        /// The handler has been told of a movement or of the wheel: the hold may be more than a click.
        bool moved = false;
        /// A device has come or gone since the press.
        bool devicesChanged = false;
        /// Nobody has asked whether it was the hand that let go.
        bool unsure = false;
        /// The hand has let go, as the raw events tell. What it has pressed again since is no matter.
        bool handUp = false;
        /// When the release has to be there after that. Until then nothing begins.
        std::optional<std::chrono::steady_clock::time_point> releaseDue;
    };

    void process(const XiEvent& event);
    void press(const XiEvent& event);
    /// A press of ours came after the hold had been given up.
    void lateOwnPress(const XiEvent& event);
    void motion(const XiEvent& event);
    void release(const XiEvent& event);
    void releaseOfHold(const XiEvent& event);
    void begin(const XiEvent& event);
    void end();
    void wheel(const XiEvent& event);
    /// A turn of the wheel was handed on, and the hold did not come back.
    void passEnded(X11WheelPass::Outcome outcome, XiEvent event);
    void rawPress(const XiEvent& event);
    void rawRelease(const XiEvent& event);
    /// Whether the device with which the hold began has switched the trigger.
    bool isTriggerOfHold(const XiEvent& raw) const;
    std::optional<std::chrono::steady_clock::time_point> releaseDue() const {
        return hold_ ? hold_->releaseDue : std::nullopt;
    }
    /// Loses the hold when its release is overdue.
    void missRelease();
    /// Whether a release is the hand's and not the server's, which releases the buttons of a device that it loses.
    bool isByHand(const XiEvent& release);
    /// Whether the release that ends the hold has been read.
    bool releaseWaiting();
    /// Whether the hold may have ended in the server.
    bool mayBeOver();
    /// Whether the release of the trigger has been read, is held back in the server by a press of ours, or is left to
    /// that of a later press.
    bool releaseComes();
    /// Asks the handler; takes note of when it wants to be woken.
    std::optional<PointerEvent> decide(PointerEvent event);
    /// The handler hears of another button in the hold.
    void tellOfOther(const XiEvent& event, bool press);
    void timeCame();
    /// For the server, every button that went down in the hold is up. A round trip.
    void releaseButtons();
    /// The hold has no result any more; what remains is to wait until its buttons are up.
    void lose(const char* reason);
    void devicesChanged();
    void otherEvent(const XEvent& event);
    void allow(const XiEvent& event, int mode);

    const X11Connection& x_;
    Display* const display_;
    LogSink& log_;
    const Hooks hooks_;
    XiQueue queue_;
    X11Devices devices_;
    X11ButtonGrab grab_;
    const X11PointerProbe probe_;
    X11ClickReturn clicks_;
    X11WheelReversal reversal_;
    X11HoldWheel wheel_;
    X11WheelPass wheelPass_;
    X11DragStart dragStart_;
    X11PointerEvents events_;

    TriggerButton trigger_ = TriggerButton::right;
    bool renew_ = false;
    std::optional<Hold> hold_;
    /// When to tell the handler that the time has come: in the time of the events, and by our own clock.
    std::optional<std::chrono::nanoseconds> wakeAt_;
    std::chrono::steady_clock::time_point wakeAtHere_;
    std::vector<PointerEvent> posted_;
    std::vector<ReturnedClick> otherClicks_;
    std::vector<std::function<void()>> tasks_;
};

} // namespace tarvik
