#include "platform/linux/common/watchdog_process.h"

#include "platform/linux/common/companion_program.h"
#include "platform/linux/common/paths.h"

#include <QTimer>

#include <fcntl.h>
#include <utility>

namespace tarvik {

void WatchdogProcess::start(pid_t tapThread) {
    end();
    tapThread_ = tapThread;
    if (qEnvironmentVariableIsSet("TARVIK_NO_WATCHDOG")) {
        log_.write("no watchdog: TARVIK_NO_WATCHDOG is set");
        return;
    }
    auto line = Lifeline::pair();
    if (!line) {
        log_.write("no watchdog: there are no more descriptors");
        return;
    }
    auto& [ours, theirs] = *line;
    process_ = std::make_unique<QProcess>();
    connect(process_.get(), &QProcess::finished, this, &WatchdogProcess::finished);
    connect(process_.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            log_.write("no watchdog: " + process_->errorString().toStdString());
    });
    // What it starts again is to write where this process does.
    process_->setProcessChannelMode(QProcess::ForwardedChannels);
    process_->setStandardInputFile(QProcess::nullDevice());
    process_->setChildProcessModifier([descriptor = theirs.descriptor()] { fcntl(descriptor, F_SETFD, 0); });
    connect_(std::move(ours)); // first: what the watchdog asks is answered even when this thread gets no further
    process_->start(companionProgram("tarvik-watchdog"),
                    {QString::number(theirs.descriptor()), QString::number(tapThread),
                     QString::fromStdString(executable().string()), QString::fromStdString(history_.text())});
}

void WatchdogProcess::end() {
    if (!process_)
        return;
    process_->disconnect(this);
    process_->kill();
    process_->waitForFinished(1000);
    process_.reset();
}

void WatchdogProcess::finished(int exitCode, QProcess::ExitStatus status) {
    if (status == QProcess::NormalExit && exitCode == 0)
        return; // the tap has ended
    lost_.add({std::chrono::steady_clock::now()});
    if (lost_.tooMany()) {
        log_.write("no watchdog: it has ended too often");
        return;
    }
    // Not at once: at the end of a session both are ended, in any order.
    QTimer::singleShot(lost_.pause(), this, [this] {
        log_.write("the watchdog has ended; starting another");
        start(tapThread_);
    });
}

} // namespace tarvik
