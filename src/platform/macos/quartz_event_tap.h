// The tap on macOS: an active event tap of the login session on the main run loop.
#pragma once

#include "platform/macos/run_loop_timer.h"
#include "platform/macos/tap_port.h"
#include "ports/event_tap.h"
#include "ports/task_queue.h"
#include "support/log.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace tarvik {

/// The tap's thread is the main thread, on which it must be made.
///
/// A tap can die or be switched off without a word (sleep, a change of the session), and an active tap of a process
/// that has lost its permission can freeze the input of the whole session. So once a second, and whenever `check` is
/// called, the tap is looked after: without the permission it is switched off, and on again when it is back; a tap that
/// was switched off is switched on; a dead one is made anew. Through all of this it counts as installed.
class QuartzEventTap final : public EventTap {
public:
    /// Monotonic.
    using Clock = std::function<std::chrono::nanoseconds()>;

    QuartzEventTap(
        MainQueue& mainQueue, LogSink& log,
        Clock clock = [] { return std::chrono::steady_clock::now().time_since_epoch(); });
    ~QuartzEventTap() override;

    bool start(Handler handler) override;
    void stop() override;
    bool installed() const override { return installed_; }
    void setTriggerButton(TriggerButton) override {} // the tap always has the events of both
    void enable() override;
    void post(const PointerEvent& event) override;
    void afterEvent(std::function<void()> task) override;
    void run(std::function<void()> command) override;

    /// Looks after the tap now; the machine has just woken up, for instance.
    void check();

private:
    static CGEventRef callback(CGEventTapProxy, CGEventType type, CGEventRef event, void* self);
    CGEventRef decide(CGEventType type, CGEventRef event);
    /// Asks the handler; has it woken when it wants to be. By default the event is the application's.
    std::optional<PointerEvent> ask(const PointerEvent& event);
    void timeCame(std::chrono::nanoseconds time);
    /// Whether the event has overtaken a press that was handed on, and was dealt with.
    bool waitsForPress(const PointerEvent& event);
    void suspend();
    void rebuild();
    /// The release of a hold may have gone by unseen.
    void loseHold();
    void drain();

    MainQueue& mainQueue_;
    LogSink& log_;
    const Clock clock_;
    const std::thread::id mainThread_;
    std::atomic<bool> installed_ = false;
    Handler handler_;
    std::unique_ptr<TapPort> port_;
    std::optional<RunLoopTimer> timer_;
    std::optional<std::chrono::nanoseconds> wakeAt_;
    std::optional<RunLoopTimer> alarm_;
    /// A press that was posted alone has not come by yet.
    bool pressOnItsWay_ = false;
    /// Told that the time has come: what is posted is such a press.
    bool handingOn_ = false;
    /// Switched off because the permission is missing.
    bool suspended_ = false;
    /// A dead tap could not be made anew; said once.
    bool dead_ = false;
    /// Inside the callback: the port must stay.
    bool deciding_ = false;

    std::mutex mutex_;
    std::vector<std::function<void()>> commands_;
};

} // namespace tarvik
