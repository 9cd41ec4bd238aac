// What a real desktop does takes a moment.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace tarvik {

/// Asks until the answer is yes, for at most five seconds.
inline bool eventually(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace tarvik
