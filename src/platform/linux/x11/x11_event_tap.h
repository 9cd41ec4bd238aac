// The tap on an X11 desktop: a thread of its own with a connection of its own.
#pragma once

#include "platform/linux/common/command_queue.h"
#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/common/lifeline.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_frontmost.h"
#include "ports/event_tap.h"
#include "ports/screens.h"
#include "support/log.h"

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <sys/types.h>
#include <thread>

namespace tarvik {

class X11PointerFilter;

/// Needs no privileges: an XInput 2 grab of the trigger button, through which each press is decided. Refused means
/// replayed to the application as it was; taken means that the hold is ours until the release.
class X11EventTap final : public EventTap {
public:
    /// `lost` is called once, on the tap's thread, when the connection to the server breaks.
    X11EventTap(const Screens& screens, std::shared_ptr<const DesktopEntries> entries, LogSink& log,
                std::function<void()> lost);
    ~X11EventTap() override;

    bool start(Handler handler) override;
    void stop() override;
    bool installed() const override { return installed_; }
    void setTriggerButton(TriggerButton button) override;
    void setWheelReversal(WheelAxes axes) override { reversed_ = axes; }
    void enable() override {} // the server switches no grab off
    void post(const PointerEvent& event) override;
    void dropHold() override;
    void afterEvent(std::function<void()> task) override;
    void run(std::function<void()> command) override;

    /// Takes the tap out between two holds, so that neither a click nor a gesture is lost, then calls `stopped`,
    /// perhaps on the tap's thread. Until then everything is as before. Main thread.
    void stopAtRest(std::function<void()> stopped);
    /// Called on the tap's thread whenever a start has armed it, with the system's number of that thread. To be set
    /// before.
    void onArmed(std::function<void(pid_t)> handler) { armed_ = std::move(handler); }
    /// The line over which a watchdog asks whether the tap's thread is alive, in place of an earlier one. It is closed
    /// when the thread has ended. Main thread.
    void connect(Lifeline line);

    const Frontmost& frontmost() const { return frontmost_; }

private:
    /// The thread. Tells `armed` whether events arrive.
    void serve(const Handler& handler, std::promise<bool>& armed);
    /// Answers the watchdog.
    void showLife();
    void logObstacle(const std::string& obstacle);
    void loop(const X11Connection& x, X11PointerFilter& filter);

    const Screens& screens_;
    LogSink& log_;
    const std::function<void()> lost_;
    std::function<void(pid_t)> armed_;
    X11Frontmost frontmost_;
    CommandQueue commands_;
    std::atomic<bool> installed_ = false;
    std::thread thread_;

    // On the tap's thread.
    bool ending_ = false;
    /// Ends as soon as no button is held, and calls it.
    std::function<void()> atRest_;
    Lifeline lifeline_;
    bool guarded_ = false;
    std::string loggedObstacle_;
    TriggerButton trigger_ = TriggerButton::right;
    WheelAxes reversed_;
    X11PointerFilter* filter_ = nullptr;
};

} // namespace tarvik
