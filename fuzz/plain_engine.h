// The rules of gestures, written down as plainly as possible: everything is worked out anew from what has happened in
// the hold, nothing is kept for speed, and no code of the engine is used. What the engine does must read the same.
#pragma once

#include "model/preferences.h"
#include "trace.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace tarvik::fuzz {

class PlainEngine {
public:
    explicit PlainEngine(Trace& trace) : trace_(trace) {}

    std::optional<PointerEvent> handle(PointerEvent event);
    void setPreferences(const Preferences& preferences);

    /// How many more gestures go to the recorder.
    int recording = 0;
    std::optional<std::string> frontmost;
    /// When it wants to hear that the time has come.
    std::optional<std::chrono::nanoseconds> wakeAt() const;
    /// What is to be done once the decision has reached the system.
    Trace afterwards;

private:
    enum class Step { other, down, drag, up };
    Step step(const PointerEvent& event) const;
    bool gesturesAllowed() const;
    std::string directions() const;
    std::string label() const;
    void endHold();
    std::optional<PointerEvent> down(const PointerEvent& event);
    std::optional<PointerEvent> drag(const PointerEvent& event);
    std::optional<PointerEvent> up(const PointerEvent& event);
    void otherButton(const PointerEvent& event);
    void timeCame(std::chrono::nanoseconds now);
    void say(const char* word, std::chrono::nanoseconds until);
    std::optional<PointerEvent> wheelInHold(const PointerEvent& event);
    PointerEvent wheelOutside(PointerEvent event) const;

    Trace& trace_;
    Preferences preferences_;
    bool held_ = false;
    bool wheelUsed_ = false;
    /// The settings' minimum when the button went down, in units of the locations.
    double minimum_ = 0;
    PointerEvent press_;
    std::vector<Point> points_;
    std::optional<std::chrono::nanoseconds> lastStep_;
    /// Each when it is due, if nothing comes in between.
    std::optional<std::chrono::nanoseconds> drag_;
    std::optional<std::chrono::nanoseconds> switchOff_;
    std::optional<std::chrono::nanoseconds> wordGoes_;
    /// Of the left, right and middle button.
    bool others_[3] = {};
};

} // namespace tarvik::fuzz
