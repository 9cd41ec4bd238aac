// Gives swallowed clicks back to the application under the pointer, and loses none.
#pragma once

#include "platform/linux/x11/x11_button_grab.h"
#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/x11_pointer_probe.h"
#include "platform/linux/x11/xi_queue.h"
#include "support/log.h"

#include <deque>
#include <set>
#include <utility>

namespace tarvik {

/// A click to be given back.
struct ReturnedClick {
    int button = 0;
    /// The device that made it: to the application the click comes from the user's own mouse.
    int source = 0;
    /// The pointer that it moves.
    int master = 0;
    /// Device pixels of the root window.
    int x = 0;
    int y = 0;
    /// Nobody has asked whether it was the hand that let go: when the device turns out to have gone, it was the server.
    bool unsure = false;
};

/// A click goes back as input of its own device while our grab is open: the grab is taken away, the device presses and
/// releases, and the grab is put back, in one go. A press of the same button that comes in between, from this device or
/// from another one, would swallow ours, because the server knows only one state of a button. The device's raw events,
/// which come whoever gets the press, tell whether that happened; then the click is given back once more after the
/// release. docs/decisions/0001-giving-a-click-back.md has the reasons and the figures. Tap's thread.
class X11ClickReturn {
public:
    X11ClickReturn(Display* display, ::Window root, XiQueue& queue, X11Devices& devices, X11ButtonGrab& grab,
                   const X11PointerProbe& probe, LogSink& log)
        : display_(display), root_(root), queue_(queue), devices_(devices), grab_(grab), probe_(probe), log_(log) {}

    /// From the moment a press is taken: follows what the devices do.
    void watch();
    /// Ends that, unless something waits. Not while an event of a hold may be on its way: a release that nobody saw
    /// would count as a button that is still down.
    void unwatch();
    void add(const ReturnedClick& click) { pending_.push_back({click, false}); }
    /// Gives back what it can; what has to wait for a release, as `waiting` tells, needs another call after it. Not
    /// during a hold.
    void settle();
    bool waiting() const { return waiting_; }
    /// Whether it waits for nothing but a press that has been read and not dealt with yet; when that does not begin a
    /// hold, `settle` is due.
    bool deferred() const { return deferred_; }
    /// For every raw event, in order.
    void follow(const XiEvent& event);
    /// Another call of `settle` is due when something waits.
    void devicesChanged();
    /// Whether the press is one of ours that came out of the server's queue late, after the grab was back. It must be
    /// replayed; it is given back by that.
    bool surfaced(const XiEvent& press);

private:
    struct Pending {
        ReturnedClick click;
        /// Our press may still wait in the server behind a press that froze the device.
        bool uncertain = false;
    };
    enum class Outcome {
        given,
        /// Another press of the button was down at the moment of ours, or came before our release: to applications both
        /// are one press. To be given back again after a release.
        merged,
        /// The device did not even report our press.
        refused,
    };

    Outcome giveBack(Pending& pending);
    using Events = std::deque<XiEvent>::const_iterator;
    /// What became of our press, by the raw events since before it.
    Outcome outcome(const Events& begin, const Events& end, int device, int button, unsigned long pressRequest) const;
    /// Whether it was the loss of its device that ended the hold; writes so into the log.
    bool wasNone(const ReturnedClick& click) const;
    /// For a device that has gone, or has no such button, the server's own makes the click. False when it could not.
    bool useStandIn(ReturnedClick& click) const;
    bool isDown(int button) const;

    Display* const display_;
    const ::Window root_;
    XiQueue& queue_;
    X11Devices& devices_;
    X11ButtonGrab& grab_;
    const X11PointerProbe& probe_;
    LogSink& log_;
    std::deque<Pending> pending_;
    /// What is down, as (device, its switch), by the raw events so far.
    std::set<std::pair<int, int>> down_;
    bool watching_ = false;
    bool waiting_ = false;
    bool deferred_ = false;
};

} // namespace tarvik
