#include "platform/macos/termination_signals.h"

#include <array>
#include <csignal>
#include <utility>

namespace tarvik {
namespace {

constexpr std::array watched = {SIGTERM, SIGINT, SIGHUP};

void setAll(void (*disposition)(int)) {
    for (const int number : watched)
        std::signal(number, disposition);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> onSignal) : onSignal_(std::move(onSignal)) {
    // The queue only watches signals; what they do is still what the process says, which by default is to end it.
    setAll(SIG_IGN);
    for (const int number : watched) {
        auto* source = dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<std::uintptr_t>(number), 0,
                                              dispatch_get_main_queue());
        if (!source) {
            std::signal(number, SIG_DFL);
            continue;
        }
        dispatch_set_context(source, this);
        dispatch_source_set_event_handler_f(source, [](void* self) {
            setAll(SIG_DFL);
            static_cast<TerminationSignals*>(self)->onSignal_();
        });
        dispatch_resume(source);
        sources_.push_back(source);
    }
}

/// A source that is cancelled on its own queue's thread calls nobody any more.
TerminationSignals::~TerminationSignals() {
    for (auto* source : sources_) {
        dispatch_source_cancel(source);
        dispatch_release(source);
    }
    setAll(SIG_DFL);
}

} // namespace tarvik
