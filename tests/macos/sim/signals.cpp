// Signals as events of the main queue.
#include "macos/sim/signals.h"

#include "macos/sim/world.h"

#include <dispatch/dispatch.h>

#include <csignal>

struct dispatch_source_type_s {};

namespace tarvik::sim {
namespace {

struct Source {
    int number;
    void* context = nullptr;
    dispatch_function_t handler = nullptr;
    bool resumed = false;
};
/// Those that are neither cancelled nor released.
std::vector<Source*> sources;

Source& sourceOf(dispatch_source_t source) { return *reinterpret_cast<Source*>(source); }

} // namespace

void raise(int number) {
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (action.sa_handler != SIG_IGN)
        fatal("a signal kills the process");
    for (auto* source : sources) {
        if (source->number == number && source->resumed)
            dispatch_async_f(dispatch_get_main_queue(), source->context, source->handler);
    }
}

} // namespace tarvik::sim

using namespace tarvik::sim;

extern "C" {

const struct dispatch_source_type_s _dispatch_source_type_signal = {};

dispatch_source_t dispatch_source_create(dispatch_source_type_t type, std::uintptr_t handle, unsigned long,
                                         dispatch_queue_t queue) {
    if (type != DISPATCH_SOURCE_TYPE_SIGNAL || queue != dispatch_get_main_queue())
        fatal("only signals on the main queue are simulated");
    sources.push_back(new Source{static_cast<int>(handle)});
    return reinterpret_cast<dispatch_source_t>(sources.back());
}
void dispatch_set_context(dispatch_source_t source, void* context) { sourceOf(source).context = context; }
void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler) {
    sourceOf(source).handler = handler;
}
void dispatch_resume(dispatch_source_t source) { sourceOf(source).resumed = true; }
void dispatch_source_cancel(dispatch_source_t source) { std::erase(sources, &sourceOf(source)); }
/// One that is released while it is not cancelled goes on calling.
void dispatch_release(dispatch_source_t source) {
    for (const auto* live : sources) {
        if (live == &sourceOf(source))
            fatal("a source is released before it is cancelled");
    }
    delete &sourceOf(source);
}

} // extern "C"
