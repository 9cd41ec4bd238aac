#include "app/composition.h"
#include "ports/platform.h"
#include "support/log.h"

#include <memory>
#include <variant>

// NOLINTNEXTLINE(bugprone-exception-escape): what is thrown this far is a fault of ours, and shall leave a dump
int main(int argc, char** argv) {
    using namespace tarvik;
    Log log(logFile());
    auto made = makePlatform(argc, argv, log);
    if (const auto* const exitCode = std::get_if<int>(&made))
        return *exitCode;
    auto& platform = std::get<std::unique_ptr<Platform>>(made);
    const int exitCode = Composition(*platform, log).run();
    const auto successor = platform->successor();
    platform.reset();
    return successor ? successor() : exitCode;
}
