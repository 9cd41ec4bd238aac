#include "macos/script_mac.h"

#include "actions/key_sequence.h"
#include "engine/script_words.h"
#include "model/vocabulary.h"

#include <sstream>
#include <stdexcept>
#include <utility>

namespace tarvik {

using namespace script;

namespace {

/// The scripts speak of actions by their titles on Linux; a title ends a line.
std::string withTitleOfThisPlatform(const std::string& text) {
    for (const auto& row : linuxVocabulary().actions) {
        const auto separated = text.size() > row.title.size() ? text.size() - row.title.size() : 0;
        if (separated > 0 && text[separated - 1] == ' ' && text.substr(separated) == row.title)
            return text.substr(0, separated) + std::string(macosVocabulary()[row.kind].title);
    }
    return text;
}

bool isPointer(const sim::EventData& event) { return event.type != kCGEventKeyDown && event.type != kCGEventKeyUp; }

} // namespace

ScriptMac::ScriptMac()
    : tap_(mainQueue_, log_,
           [] { return std::chrono::nanoseconds(static_cast<std::int64_t>(sim::world().now * 1e9 + 0.5)); })
    , engine_(tap_, trail_, actions_, frontmost_, log_) {
    for (const auto& [gesture, action] : defaultMappings())
        preferences_.mappings[gesture] = {action, std::string(macosVocabulary()[action.kind].title)};
    if (!engine_.start())
        fail("the engine did not start");
    publish();
}

std::vector<std::string> ScriptMac::run(const std::string& script) {
    std::istringstream lines(script);
    std::string line;
    while (std::getline(lines, line)) {
        ++line_;
        try {
            if (const auto words = split(line); !words.empty())
                execute(words);
        } catch (const std::exception& error) {
            fail(error.what());
        }
    }
    expectNothingLeft();
    return failures_;
}

bool ScriptMac::knows(const std::string& script) {
    const auto has = [&](const char* step) { return script.find(step) != std::string::npos; };
    return !has("\nscale ") && !has("\nlose") && !has("\nexpect switched-off");
}

void ScriptMac::execute(const Words& words) {
    const auto& verb = words[0];
    if (verb == "tags")
        return;
    if (verb == "setting") {
        applySetting(words, preferences_);
        return publish();
    }
    if (verb == "map") {
        const auto kind = actionKindFromRawValue(at(words, 2)).value();
        preferences_.mappings[at(words, 1)] = {{kind, {}}, std::string(macosVocabulary()[kind].title)};
        return publish();
    }
    if (verb == "unmap") {
        preferences_.mappings.erase(at(words, 1));
        return publish();
    }
    if (verb == "frontmost") {
        frontmost_.application = at(words, 1) == "none" ? std::nullopt : std::optional(words[1]);
        return;
    }
    if (verb == "wait")
        return sim::advance(number(at(words, 1)));
    if (verb == "record") {
        const auto handler = [this](std::string directions) { recorded_.push_back(std::move(directions)); };
        const bool on = at(words, 1) == "on";
        return tap_.run([this, handler, on] { engine_.setOnRecord(on ? handler : GestureEngine::RecordHandler()); });
    }
    if (verb == "expect")
        return expect(words);
    input(words);
}

void ScriptMac::publish() {
    tap_.run(
        [this, snapshot = std::make_shared<const Preferences>(preferences_)] { engine_.setPreferences(snapshot); });
}

void ScriptMac::input(const Words& words) {
    expectNothingLeft();
    log_.clear();
    const auto& verb = words[0];
    if (verb == "tap-disabled") {
        sent_.reset();
        sim::disableTaps(at(words, 1) == "timeout" ? kCGEventTapDisabledByTimeout : kCGEventTapDisabledByUserInput);
    } else {
        sent_ = verb == "wheel" ? wheel(words) : button(words);
        sim::hardware(*sent_);
    }
    sim::runMainQueue();
}

sim::EventData ScriptMac::button(const Words& words) {
    const auto& verb = words[0];
    auto word = words.begin() + 1;
    const bool marked = word != words.end() && *word == "marked";
    if (marked)
        ++word;
    if (word != words.end() && word->find(',') == std::string::npos)
        button_ = *word++;
    if (word != words.end())
        pointer_ = point(*word);
    const auto types = buttonEvents(button_);
    const auto type = verb == "press" ? types.down : verb == "move" ? types.drag : types.up;
    if (verb != "press" && verb != "move" && verb != "release")
        throw std::invalid_argument("no such verb: " + verb);
    auto event = sim::mouse(static_cast<CGEventType>(type), {pointer_.x, pointer_.y}, types.number);
    if (marked)
        event.integers[kCGEventSourceUserData] = selfEventMarker;
    return event;
}

sim::EventData ScriptMac::wheel(const Words& words) const {
    const auto lines = static_cast<std::int64_t>(number(at(words, 1)));
    const auto has = [&](const char* word) { return std::find(words.begin() + 2, words.end(), word) != words.end(); };
    auto event = sim::wheel(lines, 10 * lines, static_cast<double>(lines), has("horizontal"));
    event.location = {pointer_.x, pointer_.y};
    event.directionInverted = has("inverted");
    if (has("touch"))
        event.integers[kCGScrollWheelEventScrollPhase] = 2;
    if (has("momentum"))
        event.integers[kCGScrollWheelEventMomentumPhase] = 1;
    return event;
}

void ScriptMac::expect(const Words& words) {
    const auto& what = at(words, 1);
    auto& delivered = sim::world().delivered;
    if (what == "swallow") {
        const auto same = [&](const sim::EventData& event) {
            return isPointer(event) && event.integer(kCGEventSourceUserData) != selfEventMarker;
        };
        if (std::any_of(delivered.begin(), delivered.end(), same))
            fail("the event reached the application");
    } else if (what == "pass" || what == "wheel") {
        expectPassed(words);
    } else if (what == "click" || what == "press") {
        expectPosted(words);
    } else if (what == "perform") {
        expectPerform(words);
    } else if (what == "trail") {
        expectTrail(words);
    } else if (what == "recorded") {
        if (std::exchange(recorded_, {}) != Words{at(words, 2)})
            fail("something else was recorded, or nothing");
    } else if (what == "log") {
        if (!log_.contains(withTitleOfThisPlatform(at(words, 2))))
            fail("not logged; the last line is: " + (log_.lines().empty() ? "none" : log_.lines().back()));
    } else if (what != "enabled-again") { // whether the tap works shows with the next event
        throw std::invalid_argument("no such expectation: " + what);
    }
}

void ScriptMac::expectPassed(const Words& words) {
    if (!sent_)
        return; // a notice goes nowhere
    auto& delivered = sim::world().delivered;
    if (delivered.empty())
        return fail("the event reached no application");
    const auto event = delivered.front();
    delivered.erase(delivered.begin());
    if (event.type != sent_->type || event.location.x != sent_->location.x || event.location.y != sent_->location.y)
        return fail("another event reached the application");
    if (words[1] == "pass") {
        if (!event.written.empty())
            fail("the event was changed");
        return;
    }
    const bool horizontal = words.size() > 5 && words[5] == "horizontal";
    const auto line = horizontal ? kCGScrollWheelEventDeltaAxis2 : kCGScrollWheelEventDeltaAxis1;
    const auto points = horizontal ? kCGScrollWheelEventPointDeltaAxis2 : kCGScrollWheelEventPointDeltaAxis1;
    const auto fixed = horizontal ? kCGScrollWheelEventFixedPtDeltaAxis2 : kCGScrollWheelEventFixedPtDeltaAxis1;
    if (static_cast<double>(event.integer(line)) != number(at(words, 2)) ||
        static_cast<double>(event.integer(points)) != number(at(words, 3)) ||
        event.floating(fixed) != number(at(words, 4)))
        fail("the wheel event arrived with other deltas");
}

void ScriptMac::expectPosted(const Words& words) {
    const auto posted = std::exchange(sim::world().delivered, {});
    if (posted.size() != (words[1] == "click" ? 2 : 1))
        return fail(std::to_string(posted.size()) + " events reached the application");
    const auto types = buttonEvents(at(words, 2));
    const auto where = point(at(words, 3));
    for (std::size_t i = 0; i < posted.size(); ++i) {
        const auto& event = posted[i];
        if (event.type != static_cast<CGEventType>(i == 0 ? types.down : types.up) || event.location.x != where.x ||
            event.location.y != where.y || event.integer(kCGMouseEventButtonNumber) != types.number ||
            event.integer(kCGMouseEventClickState) != 1)
            fail("not the click, or not the press");
    }
}

/// The action itself, and its keys with the applications where it is keys.
void ScriptMac::expectPerform(const Words& words) {
    const auto performed = std::exchange(actions_.noted.performed, {});
    if (performed.size() != 1)
        return fail(std::to_string(performed.size()) + " actions were performed");
    const auto& [action, start] = performed.front();
    if (rawValue(action.kind) != at(words, 2))
        fail("performed " + std::string(rawValue(action.kind)));
    if (start != (words.size() > 3 ? std::optional(point(words[3])) : std::nullopt))
        fail("performed at " + (start ? text(*start) : "no point"));
    if (!log_.contains("perform " + std::string(macosVocabulary()[action.kind].title)))
        fail("not logged as performed");

    std::vector<KeyEvent> keys;
    std::erase_if(sim::world().delivered, [&](const sim::EventData& event) {
        if (isPointer(event))
            return false;
        keys.push_back({static_cast<std::uint16_t>(event.integer(kCGKeyboardEventKeycode)),
                        event.type == kCGEventKeyDown, event.flags});
        return true;
    });
    const auto& row = macosVocabulary()[action.kind];
    if (keys != (row.route == Route::keys ? keySequence(row.shortcut->shortcut) : std::vector<KeyEvent>()))
        fail("other keys reached the application");
}

void ScriptMac::expectTrail(const Words& words) {
    const bool none = at(words, 2) == "none";
    if (none != !trail_.shown)
        return fail(none ? "a trail is shown" : "no trail is shown");
    if (none)
        return;
    if (trail_.shown->label != withTitleOfThisPlatform(words[2]))
        fail("the label is: " + trail_.shown->label);
    std::vector<std::string> points;
    for (const auto p : trail_.shown->points)
        points.push_back(text(p));
    if (words.size() > 3 && points != Words(words.begin() + 3, words.end()))
        fail("the trail has other points");
}

/// Movements and releases of a hold that passed need no line of their own.
void ScriptMac::expectNothingLeft() {
    const auto delivered = std::exchange(sim::world().delivered, {});
    const bool onlyWhatWasSent = delivered.size() == 1 && sent_ && delivered[0].type == sent_->type &&
                                 delivered[0].integer(kCGEventSourceUserData) == sent_->integer(kCGEventSourceUserData);
    if (!delivered.empty() && !onlyWhatWasSent)
        fail("the application got what nobody expected");
    if (!std::exchange(actions_.noted.performed, {}).empty())
        fail("an action was performed");
    if (!std::exchange(recorded_, {}).empty())
        fail("a gesture was recorded");
}

void ScriptMac::fail(const std::string& message) {
    failures_.push_back("line " + std::to_string(line_) + ": " + message);
}

} // namespace tarvik
