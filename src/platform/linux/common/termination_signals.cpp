#include "platform/linux/common/termination_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>
#include <utility>

namespace tarvik {
namespace {

constexpr int caught[] = {SIGTERM, SIGINT, SIGHUP};

/// The handler may only write to a descriptor; a pipe brings the news to the main loop whichever thread was
/// interrupted.
int pipeEnds[2] = {-1, -1};

void onTermination(int) {
    const char byte = 0;
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

/// A closed pipe and a limit on the size of files are errors of the write in question, not the end of the process.
void surviveFailedWrites() {
    struct sigaction action {};
    action.sa_handler = [](int) {}; // programs that are started would inherit SIG_IGN
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGPIPE, SIGXFSZ})
        sigaction(signal, &action, nullptr);
}

void setHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    sigemptyset(&action.sa_mask);
    for (const int signal : caught)
        sigaction(signal, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> onSignal) {
    surviveFailedWrites();
    // Without a pipe the signals keep their effect: ending without a farewell is better than not ending.
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [notifier = notifier_.get(), onSignal = std::move(onSignal)] {
                         notifier->setEnabled(false);
                         onSignal();
                     });
    setHandler(onTermination);
}

TerminationSignals::~TerminationSignals() {
    // The pipe stays: on another thread a handler may still be on its way to it.
    if (notifier_)
        setHandler(SIG_DFL);
}

} // namespace tarvik
