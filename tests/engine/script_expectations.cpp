// The "expect" lines of gesture scripts.
#include "engine/script_words.h"
#include "engine/script_world.h"

#include <stdexcept>
#include <utility>

namespace tarvik {

using namespace script;

namespace {

bool same(const PointerEvent& a, const PointerEvent& b) {
    return a.type == b.type && a.button == b.button && a.location == b.location && a.marker == b.marker &&
           a.vertical == b.vertical && a.horizontal == b.horizontal && a.native == b.native;
}

} // namespace

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
    } else if (what == "click" || what == "press") {
        expectPosted(words);
    } else if (what == "switched-off") {
        if (std::exchange(switchedOff_, 0) != 1 || std::exchange(tap_.holdsDropped, 0) != 1)
            fail("the gestures were not switched off, or the hold was not dropped");
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

void ScriptWorld::expectPosted(const Words& words) {
    const auto posted = std::exchange(tap_.posted, {});
    if (posted.size() != (words[1] == "click" ? 2 : 1))
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
        fail("a click was given back, or a press handed on");
    if (!actions_.performed.empty())
        fail("performed " + std::string(rawValue(actions_.performed.front().action.kind)));
    if (!recorded_.empty())
        fail("recorded " + recorded_.front());
    if (tap_.enableCalls != 0)
        fail("the tap was enabled");
    if (switchedOff_ != 0 || tap_.holdsDropped != 0)
        fail("the gestures were switched off");
    tap_.posted.clear();
    actions_.performed.clear();
    recorded_.clear();
    tap_.enableCalls = switchedOff_ = tap_.holdsDropped = 0;
}

} // namespace tarvik
