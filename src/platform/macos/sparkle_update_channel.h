// Updates through the Sparkle framework.
#pragma once

#import "platform/macos/observation.h"
#import "platform/macos/sparkle.h"

#include "ports/update_channel.h"
#include "support/log.h"

@class TarvikUpdateReminders;

namespace tarvik {

class SparkleUpdateChannel final : public UpdateChannel {
public:
    /// Null when the bundle names no feed ("SUFeedURL"), or has no identifier, or the framework is not in it.
    static std::unique_ptr<SparkleUpdateChannel> make(LogSink& log);

    bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool on) override;
    std::optional<std::chrono::system_clock::time_point> lastUpdateCheckDate() const override;
    void checkForUpdates() override;
    /// The framework shows what it finds in its own windows.
    std::string outcome() const override { return {}; }
    void onChange(std::function<void()> handler) override { changed_ = std::move(handler); }

private:
    explicit SparkleUpdateChannel(Class controller);

    std::function<void()> changed_;
    ObjcRef<TarvikUpdateReminders*> reminders_;
    ObjcRef<SPUStandardUpdaterController*> controller_;
    /// The framework keeps its values in the user defaults.
    Observation defaultsChanged_;
};

} // namespace tarvik
