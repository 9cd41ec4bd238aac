// The heart: decides for every pointer event whether the applications get it, and what a gesture does.
#pragma once

#include "engine/stroke_recognizer.h"
#include "model/preferences.h"
#include "ports/actions.h"
#include "ports/event_tap.h"
#include "ports/trail.h"
#include "ports/workspace.h"
#include "support/log.h"

#include <bitset>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tarvik {

/// Holds no clock, thread, file or toolkit: time arrives with the events, preferences as snapshots, and everything it
/// causes leaves through the ports. Confined to the tap's thread, except for `start`, which is called on the main
/// thread while the tap is not yet running.
class GestureEngine {
public:
    /// Gets the directions of one finished gesture.
    using RecordHandler = std::function<void(std::string directions)>;

    /// `onSwitchOff` is told, on the tap's thread, when the user has switched the gestures off with the buttons alone;
    /// it is to make that the setting. The engine itself takes no press any more until the next preferences.
    GestureEngine(
        EventTap& tap, Trail& trail, Actions& actions, const Frontmost& frontmost, LogSink& log,
        std::function<void()> onSwitchOff = [] {});

    /// Installs the tap; true when one is installed, already or newly. A later call tries again.
    bool start();

    /// The decision on one event: the event itself, a changed one, or nothing to swallow it.
    std::optional<PointerEvent> handle(PointerEvent event);
    /// When the engine wants to be told, by a `timeCame` with that time or a later one, that it has come.
    std::optional<std::chrono::nanoseconds> wakeAt() const {
        return appointment_ ? std::optional(appointment_->at) : std::nullopt;
    }

    /// Takes effect with the next event.
    void setPreferences(std::shared_ptr<const Preferences> preferences);

    /// The next finished gesture goes to the handler instead of being performed; an empty handler takes that back. A
    /// gesture is recorded even where gestures are switched off or the application is excluded.
    void setOnRecord(RecordHandler handler);

private:
    enum class Phase : std::uint8_t { down, drag, up };
    /// What is done when its time comes.
    enum class Due : std::uint8_t { handOn, switchOff, hideCue };
    struct Appointment {
        Due what;
        std::chrono::nanoseconds at;
    };

    std::optional<Phase> phase(const PointerEvent& event) const;
    std::optional<PointerEvent> handleNotice(PointerEvent&& event);
    std::optional<PointerEvent> handleDown(PointerEvent&& event);
    std::optional<PointerEvent> handleDrag(PointerEvent&& event);
    std::optional<PointerEvent> handleUp(PointerEvent&& event);
    std::optional<PointerEvent> handleScroll(PointerEvent&& event);

    void handleOtherButton(const PointerEvent& event);
    void timeCame(std::chrono::nanoseconds now);

    void begin(PointerEvent&& down);
    /// The application gets the press after all, and with it what the hand does from now on.
    void handOn(std::chrono::nanoseconds now);
    /// The user wants out, whatever state things are in.
    void switchOff(std::chrono::nanoseconds now);
    /// This hold is more than a button that is held still.
    void noDrag();
    /// Says something where the button went down, for a moment.
    void showCue(const std::shared_ptr<Path>& path, const char* text, std::chrono::nanoseconds until);
    /// Ends a hold without a result. A recorder goes on waiting.
    void cancel();
    void reset();
    void replayClick(std::optional<PointerEvent> down, const PointerEvent& up);
    bool isFrontmostExcluded() const;
    const BoundAction* boundAction(const std::string& directions) const;
    std::string label(const std::string& directions) const;
    const std::string& currentLabel();

    EventTap& tap_;
    Trail& trail_;
    Actions& actions_;
    const Frontmost& frontmost_;
    LogSink& log_;
    const std::function<void()> onSwitchOff_;

    std::shared_ptr<const Preferences> preferences_ = std::make_shared<const Preferences>();
    RecordHandler onRecord_;

    /// The button is held and a gesture is in progress.
    bool tracking_ = false;
    /// The wheel was used during this hold.
    bool usedScroll_ = false;
    /// Every location of this hold, beginning with the press.
    std::shared_ptr<Path> points_;
    StrokeRecognizer recognizer_;
    /// The swallowed press, kept so that it can be given back.
    std::optional<PointerEvent> downEvent_;
    /// Of the left, right and middle button, those that went down during this hold and are down.
    std::bitset<3> otherButtons_;
    std::optional<Appointment> appointment_;
    /// When the wheel last stepped; kept across holds.
    std::optional<std::chrono::nanoseconds> lastScroll_;

    /// The label of `labelDirections_`, so that a drag that adds no stroke makes no text.
    std::string label_;
    std::optional<std::string> labelDirections_;
};

} // namespace tarvik
