// New versions of the program.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tarvik {

/// Present only where updates are configured. It checks by itself, daily, while the automatic checks are on; what it
/// finds it tells the user in its own way. Main thread.
class UpdateChannel {
public:
    virtual ~UpdateChannel() = default;
    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool on) = 0;
    virtual std::optional<std::chrono::system_clock::time_point> lastUpdateCheckDate() const = 0;
    /// A check that the user asked for: its outcome is shown whatever it is.
    virtual void checkForUpdates() = 0;
    /// The outcome of the last check in a sentence, for the window; empty where the channel shows its own windows.
    virtual std::string outcome() const = 0;
    /// Called when one of the values above has changed. Replaces an earlier handler.
    virtual void onChange(std::function<void()> handler) = 0;
};

} // namespace tarvik
