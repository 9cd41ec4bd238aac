#include "platform/linux/common/feed_configuration.h"

#include "platform/linux/common/companion_program.h"

namespace tarvik {

std::optional<FeedSource> configuredFeed() {
    const QString address = TARVIK_FEED_URL;
    if (address.isEmpty())
        return std::nullopt;
    return FeedSource{companionProgram("tarvik-feed"), address, TARVIK_FEED_CA, TARVIK_BUILD, TARVIK_VERSION};
}

} // namespace tarvik
