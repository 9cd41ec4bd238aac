#include "platform/linux/watchdog/watchdog.h"

#include "platform/linux/watchdog/lost_click.h"
#include "platform/linux/watchdog/server_answer.h"

#include <algorithm>
#include <cstdio>
#include <poll.h>
#include <utility>

namespace tarvik {
namespace {

using std::chrono::milliseconds;

/// From a press to the question. Until then the watchdog does not even read the press: the tap, the server and the
/// application have the processors for themselves, for what it is there to see arrive. Longer than most clicks, so that
/// it sleeps through the press that gives a click back.
constexpr milliseconds calm(100);

/// For the end of a process: one that waits for a disk ends when that has answered.
constexpr std::chrono::seconds longestEnd(10);

} // namespace

bool Watchdog::watch() {
    XSync(x_.display(), False); // from here on no press escapes; what was before, the first question finds out
    ask({});
    while (true) {
        waitForNews();
        if (line_.sign())
            question_.reset();
        if (!line_.open() || x_.lost())
            return false;
        if (until_ && Clock::now() >= *until_) {
            until_.reset();
            askAboutPresses();
        }
        if (question_ && Clock::now() - question_->step >= Patience::step && silent())
            return end(question_->press);
    }
}

void Watchdog::waitForNews() {
    const bool open = !question_ && !until_; // for presses
    std::optional<Clock::time_point> due = until_;
    if (question_)
        due = question_->step + Patience::step;
    milliseconds longest(-1);
    if (due)
        longest = std::max(std::chrono::ceil<milliseconds>(*due - Clock::now()), milliseconds(0));
    pollfd sources[] = {{line_.descriptor(), POLLIN, 0}, {open ? ConnectionNumber(x_.display()) : -1, POLLIN, 0}};
    // Xlib may have read some while it waited for an answer.
    const bool known = open && XEventsQueued(x_.display(), QueuedAlready) > 0;
    poll(sources, 2, known ? 0 : static_cast<int>(longest.count()));
    if (known || sources[1].revents != 0)
        until_ = Clock::now() + calm;
}

void Watchdog::ask(const std::optional<RawPress>& press) {
    const auto now = process_.sample(thread_);
    if (!now)
        return; // it is ending
    question_.emplace(Question{press, Patience(*now), Clock::now()});
    line_.ask();
}

void Watchdog::askAboutPresses() {
    // One answer is for all that have come so far.
    const auto first = presses_.next();
    for (auto press = first; press; press = presses_.next())
        ;
    if (first)
        ask(first);
}

bool Watchdog::silent() {
    // The tap may wait for the server; a step in which that was busy with others is a long one.
    serverAnswers(x_, Patience::longestStep);
    const auto now = Clock::now();
    const auto took = std::chrono::duration_cast<milliseconds>(now - std::exchange(question_->step, now));
    const auto thread = process_.sample(thread_);
    if (!thread) {
        question_.reset(); // the thread has ended, and the server has taken its grab
        return false;
    }
    reason_ = thread->state;
    return question_->patience.exhaustedAfter(took, *thread);
}

bool Watchdog::end(const std::optional<RawPress>& press) {
    std::fputs("Tarvik: the tap does not answer; its watchdog ends it\n", stderr);
    std::optional<LostClick> click;
    if (press && serverAnswers(x_, Patience::step))
        click.emplace(x_, *press);
    if (!process_.kill())
        return false;
    // With the last thread the process's descriptors are closed, those of the server and this one.
    const auto deadline = Clock::now() + longestEnd;
    while (line_.open() && Clock::now() < deadline) {
        pollfd line{line_.descriptor(), POLLIN, 0};
        poll(&line, 1, static_cast<int>(Patience::step.count()));
        line_.sign();
    }
    if (click)
        click->giveBack();
    return !line_.open();
}

} // namespace tarvik
