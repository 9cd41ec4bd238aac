#include "platform/linux/common/restart_report.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <string>
#include <string_view>

namespace tarvik {
namespace {

/// For the notification to be sent.
constexpr std::chrono::seconds longestFarewell(2);

std::string_view meaning(char state) {
    switch (state) {
    case 'T':
        return "stopped";
    case 't':
        return "held by a debugger";
    case 'R':
        return "in a loop without end";
    case 'D':
        return "waiting for the system";
    default:
        return "waiting";
    }
}

std::string account(const RecentEnds& history) {
    const auto& last = history.ends().back();
    const auto ago =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - last.time);
    return "the tap did not answer (" + std::string(meaning(last.state)) + ") and was ended " +
           std::to_string(ago.count()) + " ms ago, time " + std::to_string(history.ends().size()) + " within a minute";
}

} // namespace

RecentEnds restartHistory(int argc, char** argv) {
    return argc == 3 && std::string_view(argv[1]) == "--restarted" ? RecentEnds::parse(argv[2]) : RecentEnds();
}

void reportRestart(const RecentEnds& history, LogSink& log, DesktopNotice& notice) {
    if (history.ends().empty())
        return;
    log.write("started again: " + account(history));
    notice.show("Tarvik was started again", "It had stopped answering the mouse.", {}, false);
}

int stayOff(int& argc, char** argv, const RecentEnds& history, LogSink& log) {
    log.write("staying off: " + account(history));
    const QCoreApplication application(argc, argv);
    DesktopNotice notice;
    notice.show("Tarvik stays off",
                "It stopped answering the mouse several times in a minute. Start it to have gestures again.", {},
                false);
    QTimer::singleShot(longestFarewell, &QCoreApplication::quit);
    QCoreApplication::exec();
    return EXIT_FAILURE;
}

} // namespace tarvik
