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

/// From a press to the question: until then the tap, the server and the application have the processors for themselves,
/// for what the watchdog is there to see arrive.
constexpr milliseconds calm(50);

/// For the end of a process: one that waits for a disk ends when that has answered.
constexpr std::chrono::seconds longestEnd(10);

} // namespace

bool Watchdog::watch() {
    XSync(x_.display(), False); // from here on no press escapes; what was before, the first question finds out
    ask({});
    while (true) {
        readPresses(); // Xlib may have read some while it waited for an answer
        std::optional<milliseconds> left;
        if (const auto next = due())
            left = std::chrono::ceil<milliseconds>(*next - Clock::now());
        waitForNews(left);
        readSign();
        if (!line_.open() || x_.lost())
            return false;
        if (waiting_ && Clock::now() >= waiting_->until)
            askAboutWaiting();
        if (question_ && Clock::now() - question_->step >= Patience::step && silent())
            return end(question_->press);
    }
}

void Watchdog::waitForNews(std::optional<milliseconds> longest) const {
    pollfd sources[] = {{line_.descriptor(), POLLIN, 0}, {ConnectionNumber(x_.display()), POLLIN, 0}};
    poll(sources, 2, longest ? static_cast<int>(std::max(*longest, milliseconds(0)).count()) : -1);
}

std::optional<Watchdog::Clock::time_point> Watchdog::due() const {
    if (question_)
        return question_->step + Patience::step;
    return waiting_ ? std::optional(waiting_->until) : std::nullopt;
}

void Watchdog::ask(const std::optional<RawPress>& press) {
    const auto now = process_.sample(thread_);
    if (!now)
        return; // it is ending
    question_.emplace(Question{press, Patience(*now), Clock::now()});
    line_.ask();
}

void Watchdog::askLater(const RawPress& press) { waiting_ = {press, Clock::now() + calm}; }

void Watchdog::askAboutWaiting() { ask(std::exchange(waiting_, std::nullopt)->press); }

void Watchdog::readSign() {
    if (!line_.sign())
        return;
    question_.reset();
    if (const auto press = std::exchange(later_, std::nullopt))
        askLater(*press);
}

void Watchdog::readPresses() {
    while (const auto press = presses_.next()) {
        // The one before may be the one that the tap has kept.
        if (waiting_)
            askAboutWaiting();
        if (question_)
            later_ = press;
        else
            askLater(*press);
    }
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
