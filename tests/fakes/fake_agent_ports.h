#pragma once

#include "ports/activation.h"
#include "ports/activity.h"
#include "ports/permission.h"
#include "ports/status_item.h"
#include "ports/task_queue.h"
#include "ports/update_channel.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

class FakePermission final : public Permission {
public:
    bool granted = true;
    int requests = 0;
    int settingsOpened = 0;

    bool trusted() override { return granted; }
    bool request() override {
        ++requests;
        return granted;
    }
    void openSettings() override { ++settingsOpened; }
};

class FakeStatusItem final : public StatusItem {
public:
    std::optional<StatusIcon> icon;
    std::string description;
    bool appearsDisabled = false;
    std::function<std::vector<MenuItem>()> build;

    void setIcon(StatusIcon newIcon, std::string_view newDescription, bool disabled) override {
        icon = newIcon;
        description = newDescription;
        appearsDisabled = disabled;
    }
    void setMenu(std::function<std::vector<MenuItem>()> newBuild) override { build = std::move(newBuild); }

    /// Opens the menu and chooses an item.
    void choose(const std::string& title) {
        for (const auto& item : build()) {
            if (item.title == title && item.enabled)
                return item.action();
        }
        throw std::runtime_error("no item " + title);
    }
};

/// The main thread's queue with a clock that the test moves.
class FakeMainQueue final : public MainQueue {
public:
    void post(std::function<void()> task) override { after({}, std::move(task)); }
    void after(std::chrono::milliseconds delay, std::function<void()> task) override {
        tasks_.emplace(now_ + delay, std::move(task));
    }
    void pass(std::chrono::milliseconds time) {
        const auto end = now_ + time;
        while (!tasks_.empty() && tasks_.begin()->first <= end) {
            auto next = tasks_.extract(tasks_.begin());
            now_ = next.key();
            next.mapped()();
        }
        now_ = end;
    }

private:
    std::chrono::milliseconds now_{0};
    std::multimap<std::chrono::milliseconds, std::function<void()>> tasks_;
};

class FakeActivity final : public Activity {
public:
    std::vector<std::string> reasons;
    void beginLatencyCritical(std::string_view reason) override { reasons.emplace_back(reason); }
};

class FakeActivation final : public Activation {
public:
    int activated = 0;
    void activate() override { ++activated; }
};

class FakeUpdateChannel final : public UpdateChannel {
public:
    bool automatic = true;
    int checks = 0;
    std::function<void()> changed;

    bool automaticallyChecksForUpdates() const override { return automatic; }
    void setAutomaticallyChecksForUpdates(bool on) override { automatic = on; }
    std::optional<std::chrono::system_clock::time_point> lastUpdateCheckDate() const override { return std::nullopt; }
    void checkForUpdates() override { ++checks; }
    std::string outcome() const override { return {}; }
    void onChange(std::function<void()> handler) override { changed = std::move(handler); }
};

} // namespace tarvik
