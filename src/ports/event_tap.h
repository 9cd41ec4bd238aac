// The place where pointer events are seen, and may be changed or swallowed, before any application gets them.
#pragma once

#include "model/preferences.h"
#include "ports/pointer_event.h"

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace tarvik {

/// Which axes of the wheel are meant.
struct WheelAxes {
    bool vertical = false;
    bool horizontal = false;
    friend bool operator==(const WheelAxes&, const WheelAxes&) = default;
};

/// What becomes of an event.
struct Decision {
    Decision(std::optional<PointerEvent> e, std::optional<std::chrono::nanoseconds> at = {})
        : event(std::move(e)), wakeAt(at) {}

    /// The event itself, a changed one, or nothing to swallow it.
    std::optional<PointerEvent> event;
    /// When the handler wants to be told that the time has come (`timeCame`), in the time of the events. Each decision
    /// takes the place of the one before.
    std::optional<std::chrono::nanoseconds> wakeAt;
};

class EventTap {
public:
    /// Decides one event. Called on the tap's thread. Where the tap sees other buttons during a hold, the handler hears
    /// of them too, and has no say about them.
    using Handler = std::function<Decision(PointerEvent)>;

    virtual ~EventTap() = default;

    /// Installs the tap. True once events arrive, false when the system refused; a later call tries again. Main thread.
    virtual bool start(Handler handler) = 0;
    /// Takes the tap out at the end of the program; no event is held and the handler is not called once it returns.
    /// Main thread.
    virtual void stop() = 0;
    /// Whether a tap is installed. Any thread.
    virtual bool installed() const = 0;
    /// The button that the handler acts on: a platform that can may leave the others alone. Takes effect when no button
    /// is held. Tap's thread.
    virtual void setTriggerButton(TriggerButton button) = 0;
    /// The axes that the handler reverses: a platform that does not report the wheel while no button is held has the
    /// system reverse them instead. Touch surfaces stay as they are. Tap's thread.
    virtual void setWheelReversal(WheelAxes /*axes*/) {}
    /// Switches a tap that the system has switched off on again. Tap's thread.
    virtual void enable() = 0;
    /// Puts an event into the input stream, below the applications; its marker makes the tap pass it. A press alone,
    /// posted when the time has come, makes a drag of the hold: what follows is the application's. Tap's thread.
    virtual void post(const PointerEvent& event) = 0;
    /// Ends the hold at once, as if none of its buttons had been pressed. Tap's thread, from the handler.
    virtual void dropHold() {}
    /// Runs `task` once the decision on the event at hand has reached the system. Tap's thread, from the handler.
    virtual void afterEvent(std::function<void()> task) = 0;
    /// Runs `command` on the tap's thread, before any later event is decided; the order of commands is kept. Any
    /// thread.
    virtual void run(std::function<void()> command) = 0;
};

} // namespace tarvik
