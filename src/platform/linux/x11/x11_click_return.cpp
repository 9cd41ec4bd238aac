#include "platform/linux/x11/x11_click_return.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iterator>
#include <optional>

namespace tarvik {
namespace {

/// How long a window manager may look at a click before the next one, which would move the pointer under it.
constexpr std::chrono::milliseconds longestWait(5);

void update(std::set<std::pair<int, int>>& down, const XiEvent& event) {
    if (event.type == XiEventType::rawPress)
        down.insert({event.source, event.button});
    else if (event.type == XiEventType::rawRelease)
        down.erase({event.source, event.button});
}

} // namespace

void X11ClickReturn::watch() {
    if (watching_)
        return;
    watching_ = true;
    down_.clear();
    selectDeviceEvents(display_, root_, DeviceEvents::changesAndButtons);
}

void X11ClickReturn::unwatch() {
    if (!watching_ || !pending_.empty())
        return;
    watching_ = false;
    selectDeviceEvents(display_, root_, DeviceEvents::changes);
}

void X11ClickReturn::settle() {
    waiting_ = deferred_ = false;
    std::optional<ReturnedClick> last;
    while (!pending_.empty()) {
        auto& click = pending_.front().click;
        if (last && (last->x != click.x || last->y != click.y))
            probe_.waitUntilFree(click.master, longestWait);
        last = click;
        // A hold that has begun meanwhile comes first; its end settles the rest.
        queue_.pull();
        const auto& events = queue_.waiting();
        if (std::any_of(events.begin(), events.end(), [](const XiEvent& e) { return e.type == XiEventType::press; })) {
            waiting_ = deferred_ = true;
            return;
        }
        const auto outcome = giveBack(pending_.front());
        if (outcome == Outcome::merged) {
            waiting_ = true;
            return;
        }
        const bool refused = outcome == Outcome::refused;
        const bool none = (refused || queue_.tellsOfDevices()) && wasNone(click);
        if (refused && !none) {
            if (useStandIn(click))
                continue;
            log_.write("a click could not be given back: its mouse has gone");
        }
        pending_.pop_front();
    }
}

void X11ClickReturn::devicesChanged() {
    // The server does not report the releases of a device that it loses.
    for (auto pressed = down_.begin(); pressed != down_.end();)
        pressed = devices_.serves(pressed->first) ? std::next(pressed) : down_.erase(pressed);
    pending_.erase(std::remove_if(pending_.begin(), pending_.end(),
                                  [this](const Pending& pending) { return wasNone(pending.click); }),
                   pending_.end());
    waiting_ = waiting_ && !pending_.empty();
}

bool X11ClickReturn::wasNone(const ReturnedClick& click) const {
    if (!click.unsure || devices_.serves(click.source, click.master))
        return false;
    log_.write("hold lost: its mouse has gone");
    return true;
}

bool X11ClickReturn::useStandIn(ReturnedClick& click) const {
    const auto standIn = devices_.testPointer(click.master);
    if (!standIn || click.source == *standIn)
        return false;
    click.source = *standIn;
    return true;
}

void X11ClickReturn::follow(const XiEvent& event) { update(down_, event); }

bool X11ClickReturn::surfaced(const XiEvent& press) {
    if (pending_.empty() || !pending_.front().uncertain || !press.reportsPosition() ||
        press.source != devices_.prepare(pending_.front().click.source))
        return false;
    pending_.pop_front();
    waiting_ = !pending_.empty();
    return true;
}

X11ClickReturn::Outcome X11ClickReturn::giveBack(Pending& pending) {
    const auto& click = pending.click;
    if (isDown(click.button))
        return Outcome::merged;
    pending.uncertain = false;
    const auto known = static_cast<std::ptrdiff_t>(queue_.waiting().size());

    // Whatever has to be asked of the server is asked before the grab opens.
    const int device = devices_.prepare(click.source);
    const int place[2] = {click.x, click.y};
    const int trigger = grab_.button();
    grab_.release();
    const auto pressRequest = NextRequest(display_);
    devices_.fakeButton(device, click.button, true, place);
    devices_.fakeButton(device, click.button, false);
    grab_.grab(trigger); // waits for the answer: all of this has happened now

    queue_.pull();
    const auto& events = queue_.waiting();
    const auto fresh = events.begin() + known;
    const auto result = outcome(fresh, events.end(), device, click.button, pressRequest);
    // A device that is frozen by a new hold keeps our click in the server's queue: it may still surface.
    pending.uncertain =
        result == Outcome::merged && std::any_of(fresh, events.end(), [trigger](const XiEvent& event) {
            return event.type == XiEventType::press && event.button == trigger && !event.reportsPosition();
        });
    return result;
}

X11ClickReturn::Outcome X11ClickReturn::outcome(const Events& begin, const Events& end, int device, int button,
                                                unsigned long pressRequest) const {
    enum class Ours { notYet, down, up } ours = Ours::notYet;
    std::set<int> othersDown;
    for (auto event = begin; event != end && ours != Ours::up; ++event) {
        const bool press = event->type == XiEventType::rawPress;
        if ((!press && event->type != XiEventType::rawRelease) || devices_.buttons().logical(event->button) != button)
            continue;
        // Of two with the serial number of our request the first is ours: the device goes on where the request ends.
        if (event->source == device && event->serial == pressRequest + (press ? 0 : 1) &&
            ours == (press ? Ours::notYet : Ours::down)) {
            ours = press ? Ours::down : Ours::up;
        } else if (press) {
            othersDown.insert(event->source);
        } else if (ours == Ours::notYet) {
            othersDown.erase(event->source);
        }
    }
    if (!othersDown.empty())
        return Outcome::merged;
    return ours == Ours::notYet ? Outcome::refused : Outcome::given;
}

bool X11ClickReturn::isDown(int button) const {
    auto down = down_;
    for (const auto& event : queue_.waiting())
        update(down, event);
    return std::any_of(down.begin(), down.end(), [this, button](const auto& pressed) {
        return devices_.buttons().logical(pressed.second) == button;
    });
}

} // namespace tarvik
