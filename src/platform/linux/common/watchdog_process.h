// The companion process that ends Tarvik when its tap no longer answers, and starts it again.
#pragma once

#include "platform/linux/common/lifeline.h"
#include "platform/linux/common/recent_ends.h"
#include "support/log.h"

#include <QObject>
#include <QProcess>
#include <QString>

#include <functional>
#include <memory>
#include <sys/types.h>

namespace tarvik {

/// Main thread; needs an event loop. The process ends by itself when the tap closes its end of the line. One that ends
/// before is replaced, as often as RecentEnds allows.
class WatchdogProcess final : public QObject {
public:
    /// Gets the tap's end of the line.
    using Connect = std::function<void(Lifeline)>;

    /// `history`: how often Tarvik itself was started again lately; the process hands that on.
    WatchdogProcess(LogSink& log, RecentEnds history, Connect connect)
        : log_(log), history_(std::move(history)), connect_(std::move(connect)) {}
    ~WatchdogProcess() override { end(); }

    /// For the tap that has just been armed, whose thread this is, in place of the watchdog of an earlier one. Nothing
    /// happens where the environment variable TARVIK_NO_WATCHDOG is set: a developer's debugger stops the tap for as
    /// long as it likes.
    void start(pid_t tapThread);

private:
    void end();
    void finished(int exitCode, QProcess::ExitStatus status);

    LogSink& log_;
    const RecentEnds history_;
    const Connect connect_;
    RecentEnds lost_;
    pid_t tapThread_ = 0;
    std::unique_ptr<QProcess> process_;
};

} // namespace tarvik
