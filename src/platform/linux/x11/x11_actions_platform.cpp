#include "platform/linux/x11/x11_actions_platform.h"

#include <utility>

namespace tarvik {

std::unique_ptr<X11ActionsPlatform> X11ActionsPlatform::open(const std::shared_ptr<const DesktopEntries>& entries,
                                                             LogSink& log, std::function<void()> lost) {
    auto x = X11Connection::open([&log, lost = std::move(lost)] {
        log.write("the display server has gone");
        if (lost)
            lost();
    });
    if (!x)
        return nullptr;
    return std::unique_ptr<X11ActionsPlatform>(new X11ActionsPlatform(std::move(x), entries, log));
}

X11ActionsPlatform::X11ActionsPlatform(std::unique_ptr<X11Connection> x,
                                       const std::shared_ptr<const DesktopEntries>& entries, LogSink& log)
    : x_(std::move(x))
    , ewmh_(*x_)
    , keys_(*x_, log)
    , shell_(ewmh_, entries, log)
    , windows_(ewmh_, entries)
    , workspace_(ewmh_, entries) {}

} // namespace tarvik
