// The reversal of the wheel while no button is held.
#pragma once

#include "platform/linux/x11/x11_devices.h"
#include "platform/linux/x11/x11_scroll_mirror.h"
#include "platform/linux/x11/xi_event.h"
#include "ports/event_tap.h"

#include <deque>
#include <map>
#include <optional>
#include <utility>

namespace tarvik {

/// Every mouse is reversed by the best means that it offers: its driver's natural scrolling (vertical, and horizontal
/// along with it), the order of its buttons where a wheel is nothing but buttons, and X11ScrollMirror for the rest.
/// Devices that scroll by touch are left alone. No movement of the pointer causes an event. Tap's thread.
class X11WheelReversal {
public:
    X11WheelReversal(Display* display, ::Window root, X11Devices& devices);
    /// Puts every setting back.
    ~X11WheelReversal();
    X11WheelReversal(const X11WheelReversal&) = delete;
    X11WheelReversal& operator=(const X11WheelReversal&) = delete;

    /// Reverses these axes from now on. The first call also puts right what an earlier run could not put back.
    void set(WheelAxes axes);
    /// Devices have come or gone.
    void devicesChanged();
    /// For every event of these types.
    void wheelTurned(const XiEvent& event) { mirror_.turned(event); }
    void wheelReleased();
    void propertyChanged(const XiEvent& event);

    /// Once all events that have arrived are dealt with; not during a hold.
    void settle() { mirror_.settle(); }
    void holdEnded() { mirror_.rebase(); }

    /// Whether a setting of ours turns round what this device reports: a hold wants to know the hand's own direction.
    bool turnsRound(int device, bool vertical) const;
    /// Whether that setting is the driver's.
    bool driverTurnsRound(int device) const;
    /// Whether we move axes of the device ourselves.
    bool mirrors(int device) const { return mirror_.watches(device); }

private:
    void apply();
    void reverseNaturalScrolling(int device);
    void watchProperties(int device, bool watch) const;
    /// Puts the buttons of devices in their order; those that are down come later, at the next release.
    void mapButtons();
    bool tryToMapButtons() const;
    void watchWheel(bool presses, bool releases);

    Display* const display_;
    const ::Window root_;
    X11Devices& devices_;
    X11ScrollMirror mirror_;
    WheelAxes axes_;
    bool applied_ = false;
    /// Which raw events of the wheel's buttons we get: presses, releases.
    std::pair<bool, bool> wheelWatched_;
    struct Settings {
        bool naturalScrolling = false;
        std::optional<WheelAxes> buttonMap;
    };
    /// What differs from the user's own.
    std::map<int, Settings> settings_;
    /// Requests of ours whose events are still to come.
    std::deque<unsigned long> ownChanges_;
};

} // namespace tarvik
