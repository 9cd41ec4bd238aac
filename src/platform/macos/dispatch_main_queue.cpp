#include "platform/macos/dispatch_main_queue.h"

#include <dispatch/dispatch.h>

#include <memory>
#include <utility>

namespace tarvik {
namespace {

using Task = std::function<void()>;

/// Takes the task back from the queue's hands and runs it.
void run(void* context) { (*std::unique_ptr<Task>(static_cast<Task*>(context)))(); }

} // namespace

void DispatchMainQueue::post(Task task) {
    dispatch_async_f(dispatch_get_main_queue(), std::make_unique<Task>(std::move(task)).release(), run);
}

void DispatchMainQueue::after(std::chrono::milliseconds delay, Task task) {
    const auto when = dispatch_time(DISPATCH_TIME_NOW, std::chrono::nanoseconds(delay).count());
    dispatch_after_f(when, dispatch_get_main_queue(), std::make_unique<Task>(std::move(task)).release(), run);
}

} // namespace tarvik
