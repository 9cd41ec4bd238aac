// What ends a process from outside. SIGTERM, SIGINT and SIGHUP are an ordinary event of the main loop, so that the
// program ends as it should: nothing grabbed, nothing lost.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace tarvik {

/// One per process; made on the main thread. The first signal calls `onSignal` on the main loop; a second one while the
/// program is ending kills it, as it would without this class. A failed write, which by default kills the process too,
/// becomes an error of that write.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onSignal);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace tarvik
