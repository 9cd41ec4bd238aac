#include "platform/linux/x11/x11_event_tap.h"

#include "platform/linux/x11/x11_permission.h"
#include "platform/linux/x11/x11_pointer_filter.h"
#include "support/guarded.h"

#include <poll.h>
#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <unistd.h>
#include <utility>

namespace tarvik {
namespace {

/// How long to wait before asking again for a grab that another client holds.
constexpr std::chrono::milliseconds retryInterval(1000);

} // namespace

X11EventTap::X11EventTap(const Screens& screens, std::shared_ptr<const DesktopEntries> entries, LogSink& log,
                         std::function<void()> lost)
    : screens_(screens), log_(log), lost_(std::move(lost)), frontmost_(std::move(entries)) {}

X11EventTap::~X11EventTap() { stop(); }

bool X11EventTap::start(Handler handler) {
    stop();
    ending_ = false;
    atRest_ = {};
    std::promise<bool> armed;
    auto answer = armed.get_future();
    thread_ = std::thread([this, handler = std::move(handler), armed = std::move(armed)]() mutable {
        pthread_setname_np(pthread_self(), "tap");
        serve(handler, armed);
        installed_ = false;
        lifeline_.close();
        if (atRest_)
            std::exchange(atRest_, {})();
    });
    return answer.get();
}

void X11EventTap::stop() {
    if (!thread_.joinable())
        return;
    commands_.post([this] { ending_ = true; });
    thread_.join();
    commands_.drain();
    lifeline_.close();
}

void X11EventTap::connect(Lifeline line) {
    commands_.post([this, line = std::make_shared<Lifeline>(std::move(line))] {
        lifeline_ = std::move(*line);
        guarded_ = false;
    });
}

void X11EventTap::stopAtRest(std::function<void()> stopped) {
    if (!installed_)
        return stopped();
    commands_.post([this, stopped = std::move(stopped)] { atRest_ = stopped; });
}

void X11EventTap::setTriggerButton(TriggerButton button) {
    trigger_ = button;
    if (filter_)
        filter_->renew();
}

void X11EventTap::run(std::function<void()> command) {
    commands_.post([this, command = std::move(command)] { guarded(log_, "tap", command); });
}

void X11EventTap::post(const PointerEvent& event) {
    if (filter_)
        filter_->post(event);
}

void X11EventTap::dropHold() {
    if (filter_)
        filter_->dropHold();
}

void X11EventTap::afterEvent(std::function<void()> task) {
    if (filter_)
        filter_->afterEvent([this, task = std::move(task)] { guarded(log_, "tap", task); });
}

void X11EventTap::serve(const Handler& handler, std::promise<bool>& armed) {
    const auto x = X11Connection::open(lost_);
    const std::string missing = x ? missingOn(x->display()) : "a display";
    if (!missing.empty()) {
        logObstacle("gestures need " + missing);
        armed.set_value(false);
        return;
    }
    frontmost_.watch(*x);
    const auto decide = [this, &handler](const PointerEvent& event) {
        Decision decision = std::optional(event); // the application's, unless the handler says otherwise
        guarded(log_, "tap", [&] { decision = handler(event); });
        return decision;
    };
    X11PointerFilter filter(
        *x, *xiOpcode(x->display()), screens_, log_,
        {decide, [this] { commands_.drain(); }, [this](const XEvent& event) { frontmost_.handle(event); }});
    filter_ = &filter;
    commands_.drain();
    installed_ = filter.arm(trigger_);
    if (installed_)
        filter.reverseWheel(reversed_);
    logObstacle(installed_ ? "" : "another program holds the button");
    armed.set_value(installed_);
    if (installed_) {
        if (armed_)
            armed_(gettid());
        loop(*x, filter);
    }
    filter_ = nullptr;
}

void X11EventTap::showLife() {
    if (lifeline_.answer() && !std::exchange(guarded_, true))
        log_.write("event tap has a watchdog");
}

void X11EventTap::logObstacle(const std::string& obstacle) {
    // The start is tried again every second.
    if (!obstacle.empty() && obstacle != loggedObstacle_)
        log_.write("no tap: " + obstacle);
    loggedObstacle_ = obstacle;
}

void X11EventTap::loop(const X11Connection& x, X11PointerFilter& filter) {
    pollfd sources[] = {{ConnectionNumber(x.display()), POLLIN, 0}, {commands_.descriptor(), POLLIN, 0}, {}};
    auto& line = sources[2];
    bool wasArmed = true;
    while (!ending_ && !x.lost()) {
        filter.process();
        commands_.drain();
        if (atRest_ && filter.idle())
            break;
        // A new trigger waits until the old one is up, so that no application sees half a click.
        const bool armed = filter.idle() ? filter.arm(trigger_) : filter.armed();
        if (filter.idle())
            filter.reverseWheel(reversed_);
        if (armed != wasArmed)
            log_.write(armed ? "event tap has the button again"
                             : "another program holds the button; trying again every second");
        installed_ = wasArmed = armed;
        auto wait = filter.timeLeft();
        if (!armed)
            wait = std::min(wait.value_or(retryInterval), retryInterval);
        if (ending_ || XEventsQueued(x.display(), QueuedAlready) > 0 || !filter.settled())
            wait = std::chrono::milliseconds(0); // there is more to do
        line = {lifeline_.descriptor(), POLLIN, 0};
        if (poll(sources, 3, wait ? static_cast<int>(wait->count()) : -1) > 0 && line.revents != 0)
            showLife();
    }
}

} // namespace tarvik
