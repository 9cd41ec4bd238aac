#include "platform/linux/watchdog/patience.h"

namespace tarvik {
namespace {

/// An answer takes a thousandth of that.
constexpr std::chrono::milliseconds turn(20);

} // namespace

bool Patience::exhaustedAfter(std::chrono::milliseconds took, const ThreadSample& thread) {
    if (thread.state == 'R') {
        if (thread.used - used_ < turn)
            return false;
        used_ = thread.used;
    } else if (thread.state != 'T' && thread.state != 't' && took > longestStep) {
        return false;
    }
    return ++counted_ >= steps;
}

} // namespace tarvik
