#include "platform/linux/common/command_queue.h"

#include <cerrno>
#include <cstdint>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tarvik {

CommandQueue::CommandQueue() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (descriptor_ < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

CommandQueue::~CommandQueue() { close(descriptor_); }

void CommandQueue::post(std::function<void()> command) {
    const std::lock_guard lock(mutex_);
    commands_.push_back(std::move(command));
    waiting_ = true;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(descriptor_, &one, sizeof one);
}

void CommandQueue::drain() {
    if (!waiting_)
        return;
    std::vector<std::function<void()>> commands;
    {
        const std::lock_guard lock(mutex_);
        commands.swap(commands_);
        waiting_ = false;
        std::uint64_t count = 0;
        [[maybe_unused]] const auto got = read(descriptor_, &count, sizeof count);
    }
    for (const auto& command : commands)
        command();
}

} // namespace tarvik
