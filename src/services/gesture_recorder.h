// Taking the next gesture that the user draws, anywhere, instead of performing it.
#pragma once

#include "ports/task_queue.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace tarvik {

/// The engine lives on the tap's thread, so its answer may cross a cancel on the way here. Each request has a number,
/// and an answer to a request that is no longer the current one is dropped: the cancel wins. Main thread.
class GestureRecorder {
public:
    using Handler = std::function<void(std::string directions)>;
    /// Hands the handler to the engine; it is called on the tap's thread. An empty one takes the last one back.
    using SetOnRecord = std::function<void(Handler)>;

    GestureRecorder(SetOnRecord setOnRecord, TaskQueue& mainQueue)
        : setOnRecord_(std::move(setOnRecord)), mainQueue_(mainQueue) {}

    /// The directions of the next finished gesture go to `handler`, once, on the main thread. Replaces an earlier
    /// request.
    void record(Handler handler) {
        const auto request = ++*current_;
        setOnRecord_([&mainQueue = mainQueue_, current = current_, request,
                      handler = std::move(handler)](std::string directions) {
            mainQueue.post([current, request, handler, directions = std::move(directions)] {
                if (*current == request) {
                    ++*current;
                    handler(directions);
                }
            });
        });
    }

    void cancel() {
        ++*current_;
        setOnRecord_({});
    }

private:
    SetOnRecord setOnRecord_;
    TaskQueue& mainQueue_;
    /// The number of the request that counts. Read and written on the main thread only; shared because an answer may
    /// still lie in the queue when the recorder is gone.
    std::shared_ptr<std::uint64_t> current_ = std::make_shared<std::uint64_t>(0);
};

} // namespace tarvik
