// Looks after Tarvik, in a process of its own, because the one that has stopped cannot help itself.
//
//     tarvik-watchdog DESCRIPTOR THREAD PROGRAM ENDS
//
// is started by Tarvik with its end of the line to the tap, the tap's thread, the program that is to be started again,
// and what RecentEnds says about earlier ends. It becomes that program when it had to end the tap.
#include "platform/linux/common/lifeline.h"
#include "platform/linux/common/recent_ends.h"
#include "platform/linux/watchdog/watchdog.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>

int main(int argc, char** argv) {
    using namespace tarvik;
    if (argc != 5) {
        std::fputs("tarvik-watchdog is started by Tarvik\n", stderr);
        return EXIT_FAILURE;
    }
    const int descriptor = std::atoi(argv[1]);
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    setsid(); // a terminal that stops Tarvik must not stop its watchdog
    auto ends = RecentEnds::parse(argv[4]);
    {
        const auto x = X11Connection::open();
        if (!x)
            return EXIT_FAILURE;
        Watchdog watchdog(*x, Lifeline(descriptor), std::atoi(argv[2]));
        if (!watchdog.watch())
            return EXIT_SUCCESS;
        ends.add({std::chrono::steady_clock::now(), watchdog.reason()});
    }
    if (!ends.tooMany())
        std::this_thread::sleep_for(ends.pause());
    // It says what has happened, and whether it stays.
    const auto history = ends.text();
    execl(argv[3], argv[3], "--restarted", history.c_str(), nullptr);
    std::perror("Tarvik: cannot be started again");
    return EXIT_FAILURE;
}
