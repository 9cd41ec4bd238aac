#include "app/composition.h"
#include "ports/platform.h"
#include "support/log.h"

#include <memory>
#include <variant>

int main(int argc, char** argv) {
    using namespace tarvik;
    Log log(logFile());
    const auto platform = makePlatform(argc, argv, log);
    if (const auto* const exitCode = std::get_if<int>(&platform))
        return *exitCode;
    return Composition(*std::get<std::unique_ptr<Platform>>(platform), log).run();
}
