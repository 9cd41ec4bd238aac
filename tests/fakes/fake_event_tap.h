#pragma once

#include "ports/event_tap.h"

#include <utility>
#include <vector>

namespace tarvik {

/// A tap without a system: events are sent by hand, and what would reach the system is kept.
class FakeEventTap final : public EventTap {
public:
    bool refuseStart = false;
    int enableCalls = 0;
    TriggerButton trigger = TriggerButton::right;
    std::vector<PointerEvent> posted;
    int holdsDropped = 0;
    /// What the last decision asked for.
    std::optional<std::chrono::nanoseconds> wakeAt;

    bool start(Handler handler) override {
        if (refuseStart)
            return false;
        handler_ = std::move(handler);
        return true;
    }
    void stop() override { handler_ = nullptr; }
    bool installed() const override { return handler_ != nullptr; }
    void setTriggerButton(TriggerButton button) override { trigger = button; }
    void enable() override { ++enableCalls; }
    void post(const PointerEvent& event) override { posted.push_back(event); }
    void dropHold() override { ++holdsDropped; }
    void afterEvent(std::function<void()> task) override { afterEvent_.push_back(std::move(task)); }
    void run(std::function<void()> command) override { command(); }

    std::optional<PointerEvent> send(PointerEvent event) {
        auto decision = handler_(std::move(event));
        wakeAt = decision.wakeAt;
        for (const auto& task : std::exchange(afterEvent_, {}))
            task();
        return std::move(decision.event);
    }

private:
    Handler handler_;
    std::vector<std::function<void()>> afterEvent_;
};

} // namespace tarvik
