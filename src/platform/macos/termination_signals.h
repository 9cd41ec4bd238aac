// SIGTERM, SIGINT and SIGHUP as an ordinary event of the main loop, so that the program ends as it should.
#pragma once

#include <dispatch/dispatch.h>

#include <functional>
#include <vector>

namespace tarvik {

/// One per process; made on the main thread. The first signal calls `onSignal` on the main loop; another
/// one while the program is ending kills it, as it would without this class.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onSignal);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    const std::function<void()> onSignal_;
    std::vector<dispatch_source_t> sources_;
};

} // namespace tarvik
