// New versions of the program, announced by the update feed. Nothing is downloaded or installed: packages are the
// system's business.
#pragma once

#include "ports/defaults_store.h"
#include "ports/update_channel.h"
#include "support/log.h"

#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tarvik {

/// Where to look, and for what.
struct FeedSource {
    /// The program that looks; see feed/program.
    QString program;
    QString address;
    /// A file of authorities to be trusted besides the system's; empty for none.
    QString certificates;
    /// Of the program that is running: the build number, which is compared, and the version that people see.
    std::string build;
    std::string version;
};

/// Main thread; needs an event loop. The automatic checks come once a day, the first one some time after the start. One
/// that found no answer is tried again an hour later.
class FeedUpdateChannel final : public QObject, public UpdateChannel {
public:
    /// What the user is to be told. `asked`: the user waits for it.
    using Tell = std::function<void(const QString& title, const QString& text, const QString& page, bool asked)>;
    using Now = std::function<std::chrono::system_clock::time_point()>;
    struct Schedule {
        std::chrono::milliseconds first = std::chrono::minutes(5);
        std::chrono::milliseconds again = std::chrono::hours(1);
        std::chrono::milliseconds between = std::chrono::hours(24);
    };

    FeedUpdateChannel(FeedSource source, DefaultsStore& store, LogSink& log, Tell tell);
    FeedUpdateChannel(FeedSource source, DefaultsStore& store, LogSink& log, Tell tell, Now now,
                      const Schedule& schedule);
    ~FeedUpdateChannel() override;

    bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool on) override;
    std::optional<std::chrono::system_clock::time_point> lastUpdateCheckDate() const override;
    void checkForUpdates() override;
    std::string outcome() const override { return outcome_.toStdString(); }
    void onChange(std::function<void()> handler) override { changed_ = std::move(handler); }

private:
    void checkWhenDue();
    bool due() const;
    void start();
    /// `well`: the program has ended by itself, and without an error.
    void finished(bool well);
    void conclude(const struct FeedReport& report);
    void setOutcome(const QString& sentence);

    const FeedSource source_;
    DefaultsStore& store_;
    LogSink& log_;
    const Tell tell_;
    const Now now_;
    const Schedule schedule_;
    QTimer timer_;
    QProcess process_;
    /// Ends a process that does not end by itself.
    QTimer deadline_;
    /// The user waits for the check that is under way.
    bool asked_ = false;
    /// The version that the user was told of without having asked: once is enough.
    std::string told_;
    QString outcome_;
    std::function<void()> changed_;
};

} // namespace tarvik
