#include "platform/linux/x11/x11_hold_wheel.h"

#include <algorithm>
#include <cmath>

namespace tarvik {
namespace {

/// Points that a notch scrolls, for consumers of the point field; what common toolkits take for three lines of text.
constexpr double pointsPerNotch = 45;

ScrollDelta deltaOf(double notches, std::int64_t lines) {
    return {lines, static_cast<std::int64_t>(std::lround(notches * pointsPerNotch)), notches};
}

} // namespace

void X11HoldWheel::begin() {
    axes_.clear();
    inverted_.clear();
    own_.clear();
    repeated_.clear();
    listed_ = NextRequest(display_);
    for (const auto& [source, axes] : devices_.scrollAxes()) {
        for (const auto& axis : axes)
            axes_[source].push_back({axis});
    }
}

std::vector<WheelTurn> X11HoldWheel::turns(const XiEvent& event) {
    auto turns = event.type == XiEventType::press ? ofButton(event) : ofAxes(event);
    for (auto& turn : turns)
        turn.directionInverted = directionInverted(turn.source);
    return turns;
}

bool X11HoldWheel::directionInverted(int source) {
    auto known = inverted_.find(source);
    if (known == inverted_.end())
        known = inverted_.emplace(source, devices_.directionInverted(source)).first;
    // The user's inversion, not ours.
    return known->second != reversal_.driverTurnsRound(source);
}

std::vector<WheelTurn> X11HoldWheel::ofButton(const XiEvent& event) {
    std::vector<WheelTurn> turns;
    const bool vertical = event.button <= 5;
    const bool upOrLeft = event.button % 2 == 0; // 4 up, 5 down, 6 left, 7 right
    if (!event.emulated) {
        WheelTurn turn{event.source, std::nullopt, event.button};
        turn.turnedRound = reversal_.turnsRound(event.source, vertical);
        const std::int64_t line = upOrLeft != turn.turnedRound ? 1 : -1;
        (vertical ? turn.vertical : turn.horizontal) = deltaOf(static_cast<double>(line), line);
        turns.push_back(turn);
        return turns;
    }
    for (auto& axis : axes_[event.source]) {
        if (axis.changeUnknown && axis.info.vertical == vertical)
            turns.push_back(turnOf(event.source, axis, upOrLeft ? -axis.info.increment : axis.info.increment));
    }
    return turns;
}

std::vector<WheelTurn> X11HoldWheel::ofAxes(const XiEvent& event) {
    std::vector<WheelTurn> turns;
    catchUp(event);
    // What comes late of a wheel that we reverse may be our doing, and the list has it already.
    if (event.serial < listed_ && reversal_.mirrors(event.source))
        return turns;
    for (auto& axis : axes_[event.source]) {
        const auto number = static_cast<std::size_t>(axis.info.number);
        if (number >= XiEvent::axisCount || !event.reported[number])
            continue;
        // The list was made after this movement and has it in its value already.
        axis.changeUnknown = !axis.moved && event.serial < listed_;
        axis.moved = true;
        const double change = axis.changeUnknown ? 0 : event.axes[number] - axis.info.value;
        axis.info.value = event.axes[number];
        if (change != 0 && !isOwn(event, axis.info.number, change))
            turns.push_back(turnOf(event.source, axis, change));
    }
    return turns;
}

WheelTurn X11HoldWheel::turnOf(int source, Axis& axis, double change) const {
    const bool turnedRound = reversal_.turnsRound(source, axis.info.vertical);
    // Axes grow downwards and to the right, deltas upwards and to the left.
    const double notches = (turnedRound ? change : -change) / axis.info.increment;
    axis.fraction += notches;
    const double lines = std::trunc(axis.fraction);
    axis.fraction -= lines;
    WheelTurn turn{source, axis.info.number, static_cast<int>(std::lround(change)), turnedRound};
    (axis.info.vertical ? turn.vertical : turn.horizontal) = deltaOf(notches, static_cast<std::int64_t>(lines));
    return turn;
}

bool X11HoldWheel::isOwn(const XiEvent& event, int axis, double change) {
    const auto own = std::find_if(own_.begin(), own_.end(), [&](const OwnTurn& turn) {
        // Not before the server had our request; an equal turn of the hand in that moment is as good.
        return event.serial >= turn.serial && event.source == turn.source && axis == turn.axis &&
               std::lround(change) == turn.amount;
    });
    if (own == own_.end())
        return false;
    own_.erase(own);
    return true;
}

void X11HoldWheel::catchUp(const XiEvent& event) {
    while (!repeated_.empty() && event.serial >= repeated_.front().serial) {
        const auto& turn = repeated_.front();
        for (auto& axis : axes_[turn.source])
            axis.info.value += axis.info.number == turn.axis ? turn.amount : 0;
        repeated_.pop_front();
    }
}

void X11HoldWheel::takeBack(const WheelTurn& turn) {
    if (!turn.axis || turn.amount == 0)
        return;
    own_.push_back({NextRequest(display_), turn.source, *turn.axis, -turn.amount});
    devices_.fakeScroll(turn.source, *turn.axis, -turn.amount);
}

void X11HoldWheel::repeat(const WheelTurn& turn) {
    if (turn.axis) {
        const int amount = turn.turnedRound ? -turn.amount : turn.amount;
        announce(turn.source);
        repeated_.push_back({NextRequest(display_), turn.source, *turn.axis, amount});
        devices_.fakeScroll(turn.source, *turn.axis, amount);
    } else {
        // Where the order of the buttons is turned round, it turns this one back.
        devices_.fakeButton(turn.source, turn.amount, true);
        devices_.fakeButton(turn.source, turn.amount, false);
    }
}

void X11HoldWheel::announce(int source) {
    for (const auto& axis : axes_[source])
        devices_.fakeScroll(source, axis.info.number, 0);
}

} // namespace tarvik
