#include "engine/script_world.h"

#include "model/vocabulary.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace tarvik {
namespace {

constexpr auto started = "event tap started";

std::vector<std::string> split(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    std::string word;
    while (in >> std::ws && in.peek() != std::istringstream::traits_type::eof() && in.peek() != '#') {
        if (in.peek() == '"')
            in >> std::quoted(word);
        else
            in >> word;
        words.push_back(word);
    }
    return words;
}

const std::string& at(const std::vector<std::string>& words, std::size_t index) {
    if (index >= words.size())
        throw std::invalid_argument("a word is missing");
    return words[index];
}

double number(const std::string& text) {
    std::size_t used = 0;
    const double value = std::stod(text, &used);
    if (used != text.size())
        throw std::invalid_argument("not a number: " + text);
    return value;
}

bool flag(const std::string& text) {
    if (text != "true" && text != "false")
        throw std::invalid_argument("neither true nor false: " + text);
    return text == "true";
}

Point point(const std::string& text) {
    const auto comma = text.find(',');
    if (comma == std::string::npos)
        throw std::invalid_argument("not a point: " + text);
    return {number(text.substr(0, comma)), number(text.substr(comma + 1))};
}

struct ButtonEvents {
    std::int64_t number;
    PointerEventType down, drag, up;
};

ButtonEvents buttonEvents(const std::string& name) {
    using enum PointerEventType;
    if (name == "right")
        return {1, rightDown, rightDragged, rightUp};
    const std::int64_t number = name == "middle" ? 2 : name == "back" ? 3 : 0;
    if (number == 0)
        throw std::invalid_argument("no such button: " + name);
    return {number, otherDown, otherDragged, otherUp};
}

std::string text(Point p) {
    std::ostringstream out;
    out << p.x << ',' << p.y;
    return out.str();
}

bool same(const PointerEvent& a, const PointerEvent& b) {
    return a.type == b.type && a.button == b.button && a.location == b.location && a.marker == b.marker &&
           a.vertical == b.vertical && a.horizontal == b.horizontal && a.native == b.native;
}

} // namespace

ScriptWorld::ScriptWorld() : engine_(tap_, trail_, actions_, frontmost_, log_) {
    for (const auto& [gesture, action] : defaultMappings())
        preferences_.mappings[gesture] = {action, std::string(linuxVocabulary()[action.kind].title)};
    if (!engine_.start() || !log_.contains(started))
        fail("the engine did not start");
    publish();
}

std::vector<std::string> ScriptWorld::run(const std::string& script) {
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

void ScriptWorld::execute(const Words& words) {
    const auto& verb = words[0];
    if (verb == "tags")
        return;
    if (verb == "setting")
        return set(words);
    if (verb == "map")
        return bind(words);
    if (verb == "unmap") {
        preferences_.mappings.erase(at(words, 1));
        return publish();
    }
    if (verb == "frontmost") {
        frontmost_.application = at(words, 1) == "none" ? std::nullopt : std::optional(words[1]);
        return;
    }
    if (verb == "scale") {
        unitsPerPoint_ = number(at(words, 1));
        return;
    }
    if (verb == "wait") {
        now_ += std::chrono::nanoseconds(static_cast<std::int64_t>(number(at(words, 1)) * 1e9 + 0.5));
        return;
    }
    if (verb == "record")
        return engine_.setOnRecord(at(words, 1) == "on"
                                       ? [this](std::string directions) { recorded_.push_back(std::move(directions)); }
                                       : GestureEngine::RecordHandler{});
    if (verb == "expect")
        return expect(words);
    input(words);
}

void ScriptWorld::set(const Words& words) {
    const auto& key = at(words, 1);
    const auto value = words.size() > 2 ? words[2] : "";
    if (key == "enabled")
        preferences_.enabled = flag(value);
    else if (key == "showTrail")
        preferences_.showTrail = flag(value);
    else if (key == "minStroke")
        preferences_.minStroke = number(value);
    else if (key == "reverseVertical")
        preferences_.reverseVertical = flag(value);
    else if (key == "reverseHorizontal")
        preferences_.reverseHorizontal = flag(value);
    else if (key == "triggerButton")
        preferences_.triggerButton = triggerButtonFromRawValue(value).value();
    else if (key == "scrollBinding")
        preferences_.scrollBinding = scrollBindingFromRawValue(value).value();
    else if (key == "excludedApps")
        preferences_.excludedApps.assign(words.begin() + 2, words.end());
    else
        throw std::invalid_argument("no such setting: " + key);
    publish();
}

void ScriptWorld::bind(const Words& words) {
    const auto kind = actionKindFromRawValue(at(words, 2)).value();
    preferences_.mappings[at(words, 1)] = {{kind, {}}, std::string(linuxVocabulary()[kind].title)};
    publish();
}

void ScriptWorld::publish() { engine_.setPreferences(std::make_shared<const Preferences>(preferences_)); }

void ScriptWorld::input(const Words& words) {
    expectNothingLeft();
    const auto& verb = words[0];
    if (verb == "wheel")
        return wheelInput(words);
    if (verb == "tap-disabled") {
        PointerEvent event;
        event.type = at(words, 1) == "timeout" ? PointerEventType::tapDisabledByTimeout
                                               : PointerEventType::tapDisabledByUserInput;
        return send(event);
    }
    pointerInput(verb, words);
}

void ScriptWorld::pointerInput(const std::string& verb, const Words& words) {
    auto word = words.begin() + 1;
    PointerEvent event;
    if (word != words.end() && *word == "marked") {
        event.marker = selfEventMarker;
        ++word;
    }
    if (word != words.end() && word->find(',') == std::string::npos)
        button_ = *word++;
    if (word != words.end())
        pointer_ = point(*word++);
    const auto types = buttonEvents(button_);
    if (verb == "press")
        event.type = types.down;
    else if (verb == "move")
        event.type = types.drag;
    else if (verb == "release")
        event.type = types.up;
    else
        throw std::invalid_argument("no such verb: " + verb);
    event.button = types.number;
    send(event);
}

void ScriptWorld::wheelInput(const Words& words) {
    PointerEvent event;
    event.type = PointerEventType::scrollWheel;
    const auto lines = static_cast<std::int64_t>(number(at(words, 1)));
    // A notch is ten points, as a plain wheel sends it.
    const ScrollDelta delta{lines, 10 * lines, static_cast<double>(lines)};
    bool horizontal = false;
    for (auto word = words.begin() + 2; word != words.end(); ++word) {
        if (*word == "horizontal")
            horizontal = true;
        else if (*word == "touch")
            event.scrollPhase = 2;
        else if (*word == "momentum")
            event.momentumPhase = 1;
        else if (*word == "inverted")
            event.directionInverted = true;
        else
            throw std::invalid_argument("no such wheel word: " + *word);
    }
    (horizontal ? event.horizontal : event.vertical) = delta;
    send(event);
}

void ScriptWorld::send(PointerEvent event) {
    event.location = pointer_;
    event.unitsPerPoint = unitsPerPoint_;
    event.time = now_;
    event.native = std::make_shared<int>(line_);
    log_.clear();
    sent_ = event;
    result_ = tap_.send(std::move(event));
}

void ScriptWorld::expect(const Words& words) {
    const auto& what = at(words, 1);
    if (what == "swallow") {
        if (result_)
            fail("the event passed");
    } else if (what == "pass") {
        if (!result_ || !same(*result_, *sent_))
            fail(result_ ? "the event was changed" : "the event was swallowed");
    } else if (what == "wheel") {
        expectWheel(words);
    } else if (what == "click") {
        expectClick(words);
    } else if (what == "perform") {
        expectPerform(words);
    } else if (what == "trail") {
        expectTrail(words);
    } else if (what == "recorded") {
        if (recorded_ != Words{at(words, 2)})
            fail("recorded " + std::to_string(recorded_.size()) + " gestures" +
                 (recorded_.empty() ? "" : ", the last " + recorded_.back()));
        recorded_.clear();
    } else if (what == "log") {
        if (!log_.contains(at(words, 2)))
            fail("not logged; the last line is: " + (log_.lines().empty() ? "none" : log_.lines().back()));
    } else if (what == "enabled-again") {
        if (tap_.enableCalls != 1)
            fail("the tap was enabled " + std::to_string(tap_.enableCalls) + " times");
        tap_.enableCalls = 0;
    } else {
        throw std::invalid_argument("no such expectation: " + what);
    }
}

void ScriptWorld::expectTrail(const Words& words) {
    const bool none = at(words, 2) == "none";
    if (none != !trail_.shown)
        return fail(none ? "a trail is shown: " + trail_.shown->label : "no trail is shown");
    if (none)
        return;
    if (trail_.shown->label != words[2])
        fail("the label is: " + trail_.shown->label);
    if (words.size() > 3) {
        std::string points;
        for (const auto p : trail_.shown->points)
            points += (points.empty() ? "" : " ") + text(p);
        std::string expected;
        for (auto word = words.begin() + 3; word != words.end(); ++word)
            expected += (expected.empty() ? "" : " ") + *word;
        if (points != expected)
            fail("the trail's points are: " + points);
    }
}

void ScriptWorld::expectWheel(const Words& words) {
    if (!result_)
        return fail("the wheel event was swallowed");
    const auto& delta = words.size() > 5 && words[5] == "horizontal" ? result_->horizontal : result_->vertical;
    const ScrollDelta expected{static_cast<std::int64_t>(number(at(words, 2))),
                               static_cast<std::int64_t>(number(at(words, 3))), number(at(words, 4))};
    if (!(delta == expected))
        fail("the wheel event left with " + std::to_string(delta.line) + " " + std::to_string(delta.point) + " " +
             std::to_string(delta.fixed));
}

void ScriptWorld::expectPerform(const Words& words) {
    const auto performed = std::exchange(actions_.performed, {});
    if (performed.size() != 1)
        return fail(std::to_string(performed.size()) + " actions were performed");
    const auto& [action, start] = performed.front();
    if (rawValue(action.kind) != at(words, 2))
        fail("performed " + std::string(rawValue(action.kind)));
    const auto expected = words.size() > 3 ? std::optional(point(words[3])) : std::nullopt;
    if (start != expected)
        fail("performed at " + (start ? text(*start) : "no point"));
}

void ScriptWorld::expectClick(const Words& words) {
    const auto posted = std::exchange(tap_.posted, {});
    if (posted.size() != 2)
        return fail(std::to_string(posted.size()) + " events were posted");
    const auto types = buttonEvents(at(words, 2));
    const auto where = point(at(words, 3));
    for (const auto& event : posted) {
        const auto& expected = &event == &posted.front() ? types.down : types.up;
        if (event.type != expected || event.button != types.number || event.location != where)
            fail("posted type " + std::to_string(static_cast<std::uint32_t>(event.type)) + " at " +
                 text(event.location));
        if (event.marker != selfEventMarker || !event.native)
            fail("posted without the marker or the platform's event");
    }
}

void ScriptWorld::expectNothingLeft() {
    if (!tap_.posted.empty())
        fail("a click was given back");
    if (!actions_.performed.empty())
        fail("performed " + std::string(rawValue(actions_.performed.front().action.kind)));
    if (!recorded_.empty())
        fail("recorded " + recorded_.front());
    if (tap_.enableCalls != 0)
        fail("the tap was enabled");
    tap_.posted.clear();
    actions_.performed.clear();
    recorded_.clear();
    tap_.enableCalls = 0;
}

void ScriptWorld::fail(const std::string& message) {
    failures_.push_back("line " + std::to_string(line_) + ": " + message);
}

} // namespace tarvik
