// The simulated Mac, as a test sees and moves it.
#pragma once

#include "macos/sim/objects.h"

#include <ApplicationServices/ApplicationServices.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tarvik::sim {

/// What there is in an event.
struct EventData {
    CGEventType type = kCGEventNull;
    CGPoint location = {};
    CGEventFlags flags = 0;
    std::map<CGEventField, std::int64_t> integers;
    std::map<CGEventField, double> doubles;
    /// Of the window-system event that is made from it.
    bool directionInverted = false;
    /// Every field that was written since the device sent it, in order.
    std::vector<CGEventField> written;

    std::int64_t integer(CGEventField field) const;
    double floating(CGEventField field) const;
};

struct Posted {
    CGEventTapLocation place;
    EventData event;
};

/// How the taps were made.
struct TapRecord {
    CGEventTapLocation place;
    CGEventTapPlacement placement;
    CGEventTapOptions options;
    CGEventMask mask;
    CGEventTapCallBack callback;
};

/// An object of an application's interface.
struct AxNode {
    /// Stands for another node.
    struct Link {
        std::size_t node;
    };
    using Value = std::variant<bool, double, std::string, Link, CGPoint, CGSize, AXError>;
    pid_t process = 0;
    CGRect area = {};
    std::map<std::string, Value> attributes;
    /// What a write of the attribute answers; 0 when it is not here.
    std::map<std::string, AXError> writeErrors;
    /// Or the error with which the question fails.
    std::map<std::string, std::variant<bool, AXError>> settable;
};

struct AxCall {
    std::string what;
    /// In effect for the object at the call; seconds.
    float timeout;
};

struct KeyLayout {
    std::map<std::uint16_t, std::u16string> keys;
    bool hasData = true;
    OSStatus status = 0;
};

struct World {
    /// The permission, and how often the user was asked for it.
    bool trusted = true;
    int prompts = 0;

    // Input.
    bool refuseTaps = false;
    bool refuseCopies = false;
    bool refuseKeyEvents = false;
    bool leftDown = false;
    /// What is posted comes after the next event of a device.
    bool postsAreLate = false;
    std::vector<TapRecord> taps;
    std::vector<Posted> posted;
    /// What reached the applications.
    std::vector<EventData> delivered;
    /// Events that nobody gets any more: an active tap of a process without the permission holds them up.
    int stuck = 0;
    /// Of the event sources that were made: their states and suppression intervals.
    std::vector<CGEventSourceStateID> sourceStates;
    std::vector<CFTimeInterval> suppressionIntervals;

    // Time, in seconds.
    double now = 1000;

    // The interfaces of applications: the application at a place is the first node that has it in its area.
    std::vector<AxNode> nodes;
    std::map<pid_t, std::size_t> applications;
    std::vector<AxCall> axCalls;

    // The keyboard.
    std::optional<KeyLayout> layout = KeyLayout();
    std::vector<std::string> keyTranslations;

    // The Dock.
    std::vector<std::string> opened;
    std::vector<std::string> dockNotifications;
};

World& world();
/// A fresh Mac. Nothing may be left of the last one.
void reset();

/// A device sends an event.
void hardware(EventData event);
EventData mouse(CGEventType type, CGPoint location, std::int64_t button, std::int64_t clicks = 1);
EventData wheel(std::int64_t lines, std::int64_t points, double fixed, bool horizontal = false);

/// The system switches every tap off and says so.
void disableTaps(CGEventType notice);
/// The same without a word.
void disableTapsSilently();
/// The system gives the taps' ports up.
void killPorts();

/// Time passes on the main run loop: timers and delayed tasks fire when they are due.
void advance(double seconds);
/// Runs what is queued for the main thread.
void runMainQueue();

/// The distributed notification reaches whoever observes it.
void notify(CFStringRef name);
std::size_t observers();

} // namespace tarvik::sim
