#include "platform/linux/watchdog/guarded_process.h"

#include <csignal>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <unistd.h>

extern "C" {
#include <sys/pidfd.h> // up to glibc 2.36 it does not say itself that it is C
}

namespace tarvik {

GuardedProcess::GuardedProcess(pid_t process) : process_(process), handle_(pidfd_open(process, 0)) {}

GuardedProcess::~GuardedProcess() {
    if (handle_ >= 0)
        close(handle_);
}

std::optional<ThreadSample> GuardedProcess::sample(pid_t thread) const {
    std::ifstream file("/proc/" + std::to_string(process_) + "/task/" + std::to_string(thread) + "/stat");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    // The name, in parentheses, may hold anything; after it come the state as field 3, user and system time as 14, 15.
    const auto name = text.rfind(") ");
    if (name == std::string::npos)
        return std::nullopt;
    std::istringstream fields(text.substr(name + 2));
    char state = '?';
    fields >> state;
    std::string skipped;
    for (int field = 4; field < 14; ++field)
        fields >> skipped;
    long user = 0;
    long system = 0;
    fields >> user >> system;
    if (!fields || state == 'Z' || state == 'X')
        return std::nullopt;
    return ThreadSample{state, std::chrono::milliseconds((user + system) * 1000 / sysconf(_SC_CLK_TCK))};
}

bool GuardedProcess::kill() const { return pidfd_send_signal(handle_, SIGKILL, nullptr, 0) == 0; }

} // namespace tarvik
