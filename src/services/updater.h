// Updates as the menu and the window use them, whether they are configured or not.
#pragma once

#include "ports/activation.h"
#include "ports/update_channel.h"
#include "support/observers.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tarvik {

/// Main thread.
class Updater {
public:
    /// `controller` is null when updates are not configured; then the switch reads off, a change of it is ignored, and
    /// a check does nothing but bring the program to the front.
    Updater(UpdateChannel* controller, Activation& activation) : controller_(controller), activation_(activation) {
        if (controller_)
            controller_->onChange([this] { observers_.notify(); });
    }
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    ~Updater() {
        if (controller_)
            controller_->onChange({});
    }

    bool configured() const { return controller_ != nullptr; }

    bool automaticallyChecksForUpdates() const { return controller_ && controller_->automaticallyChecksForUpdates(); }
    void setAutomaticallyChecksForUpdates(bool on) {
        if (controller_)
            controller_->setAutomaticallyChecksForUpdates(on);
        // Also when it was ignored: a switch that was moved must move back.
        observers_.notify();
    }
    std::optional<std::chrono::system_clock::time_point> lastUpdateCheckDate() const {
        return controller_ ? controller_->lastUpdateCheckDate() : std::nullopt;
    }
    /// See UpdateChannel.
    std::string outcome() const { return controller_ ? controller_->outcome() : std::string(); }

    void checkForUpdates() {
        activation_.activate();
        if (controller_)
            controller_->checkForUpdates();
    }

    /// Told after each change of a value above.
    [[nodiscard]] Subscription observe(std::function<void()> observer) { return observers_.add(std::move(observer)); }

private:
    UpdateChannel* controller_;
    Activation& activation_;
    Observers<> observers_;
};

} // namespace tarvik
