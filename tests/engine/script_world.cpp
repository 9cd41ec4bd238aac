#include "engine/script_world.h"

#include "engine/script_words.h"
#include "model/vocabulary.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace tarvik {

using namespace script;

ScriptWorld::ScriptWorld() : engine_(tap_, trail_, actions_, frontmost_, log_, [this] { ++switchedOff_; }) {
    for (const auto& [gesture, action] : defaultMappings())
        preferences_.mappings[gesture] = {action, std::string(linuxVocabulary()[action.kind].title)};
    if (!engine_.start() || !log_.contains("event tap started"))
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
    if (verb == "setting") {
        applySetting(words, preferences_);
        return publish();
    }
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
    if (verb == "wait")
        return wait(std::chrono::nanoseconds(static_cast<std::int64_t>(number(at(words, 1)) * 1e9 + 0.5)));
    if (verb == "record")
        return engine_.setOnRecord(at(words, 1) == "on"
                                       ? [this](std::string directions) { recorded_.push_back(std::move(directions)); }
                                       : GestureEngine::RecordHandler{});
    if (verb == "expect")
        return expect(words);
    input(words);
}

void ScriptWorld::bind(const Words& words) {
    const auto kind = actionKindFromRawValue(at(words, 2)).value();
    preferences_.mappings[at(words, 1)] = {{kind, {}}, std::string(linuxVocabulary()[kind].title)};
    publish();
}

void ScriptWorld::publish() { engine_.setPreferences(std::make_shared<const Preferences>(preferences_)); }

void ScriptWorld::wait(std::chrono::nanoseconds duration) {
    const auto end = now_ + duration;
    while (tap_.wakeAt && *tap_.wakeAt <= end) {
        expectNothingLeft();
        now_ = std::max(now_, *tap_.wakeAt);
        log_.clear();
        tap_.send({.type = PointerEventType::timeCame, .time = now_});
    }
    now_ = end;
}

void ScriptWorld::input(const Words& words) {
    expectNothingLeft();
    const auto& verb = words[0];
    if (verb == "wheel")
        return wheelInput(words);
    if (verb == "lose") {
        PointerEvent event;
        event.type = PointerEventType::holdLost;
        return send(event);
    }
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

void ScriptWorld::fail(const std::string& message) {
    failures_.push_back("line " + std::to_string(line_) + ": " + message);
}

} // namespace tarvik
