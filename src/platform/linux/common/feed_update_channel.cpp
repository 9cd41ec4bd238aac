#include "platform/linux/common/feed_update_channel.h"

#include "platform/linux/common/feed_report.h"
#include "support/version_order.h"

#include <utility>

namespace tarvik {
namespace {

constexpr auto automaticKey = "automaticUpdateChecks";
/// Seconds since 1970; without fractions, so that the file stays readable.
constexpr auto lastCheckKey = "lastUpdateCheck";
/// More than the process gives itself.
constexpr auto patience = std::chrono::seconds(45);

} // namespace

FeedUpdateChannel::FeedUpdateChannel(FeedSource source, DefaultsStore& store, LogSink& log, Tell tell)
    : FeedUpdateChannel(std::move(source), store, log, std::move(tell), std::chrono::system_clock::now, Schedule()) {}

FeedUpdateChannel::FeedUpdateChannel(FeedSource source, DefaultsStore& store, LogSink& log, Tell tell, Now now,
                                     const Schedule& schedule)
    : source_(std::move(source))
    , store_(store)
    , log_(log)
    , tell_(std::move(tell))
    , now_(std::move(now))
    , schedule_(schedule) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::VeryCoarseTimer);
    deadline_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { checkWhenDue(); });
    connect(&deadline_, &QTimer::timeout, &process_, &QProcess::kill);
    connect(&process_, &QProcess::finished, this, [this](int exitCode, QProcess::ExitStatus status) {
        finished(status == QProcess::NormalExit && exitCode == 0);
    });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finished(false);
    });
    connect(&process_, &QProcess::readyReadStandardOutput, this, [this] {
        if (process_.bytesAvailable() > longestFeedReport)
            process_.kill();
    });
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.setStandardInputFile(QProcess::nullDevice());
    timer_.start(schedule_.first);
}

FeedUpdateChannel::~FeedUpdateChannel() {
    process_.disconnect(this);
    process_.kill();
    process_.waitForFinished(1000);
}

bool FeedUpdateChannel::automaticallyChecksForUpdates() const { return store_.boolean(automaticKey).value_or(true); }

void FeedUpdateChannel::setAutomaticallyChecksForUpdates(bool on) {
    store_.setBoolean(automaticKey, on);
    if (changed_)
        changed_();
}

std::optional<std::chrono::system_clock::time_point> FeedUpdateChannel::lastUpdateCheckDate() const {
    const auto seconds = store_.number(lastCheckKey);
    // Outside of these years a hand has written it.
    if (!seconds || *seconds <= 0 || *seconds > 1e11)
        return std::nullopt;
    return std::chrono::system_clock::time_point(std::chrono::seconds(static_cast<std::int64_t>(*seconds)));
}

bool FeedUpdateChannel::due() const {
    const auto last = lastUpdateCheckDate();
    // A check in the future was made before the clock was set.
    return !last || *last > now_() || now_() - *last >= schedule_.between;
}

void FeedUpdateChannel::checkWhenDue() {
    if (automaticallyChecksForUpdates() && due())
        start();
    timer_.start(schedule_.again);
}

void FeedUpdateChannel::checkForUpdates() {
    asked_ = true;
    setOutcome("Checking for updates…");
    start();
}

void FeedUpdateChannel::start() {
    if (process_.state() != QProcess::NotRunning)
        return;
    deadline_.start(patience);
    process_.start(source_.program, {source_.address, source_.certificates});
}

void FeedUpdateChannel::finished(bool well) {
    deadline_.stop();
    conclude(readFeedReport(well ? process_.readAllStandardOutput() : QByteArray()));
}

void FeedUpdateChannel::conclude(const FeedReport& report) {
    const bool asked = std::exchange(asked_, false);
    const auto own = QString::fromStdString(source_.version);
    if (!report.failure.isEmpty()) {
        log_.write("update check: " + report.failure.toStdString());
        setOutcome(report.failure);
        if (asked)
            tell_("Tarvik could not look for updates", report.failure, {}, true);
        return;
    }
    store_.setNumber(
        lastCheckKey,
        static_cast<double>(std::chrono::duration_cast<std::chrono::seconds>(now_().time_since_epoch()).count()));
    const auto build = report.version.toStdString();
    const auto order = compareVersions(build, source_.build);
    if (std::is_gt(order)) {
        setOutcome(QStringLiteral("Tarvik %1 is available.").arg(report.shortVersion));
        if (asked || told_ != build)
            tell_(outcome_, QStringLiteral("You have %1.").arg(own), report.page, asked);
        told_ = build;
    } else {
        setOutcome(std::is_lt(order) ? QStringLiteral("Tarvik %1 is newer than the newest published version, %2.")
                                           .arg(own, report.shortVersion)
                                     : QStringLiteral("Tarvik %1 is the newest version.").arg(own));
        if (asked)
            tell_("Tarvik is up to date", outcome_, {}, true);
    }
    log_.write("update check: " + outcome_.toStdString());
}

void FeedUpdateChannel::setOutcome(const QString& sentence) {
    outcome_ = sentence;
    if (changed_)
        changed_();
}

} // namespace tarvik
