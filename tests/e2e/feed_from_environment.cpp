// The program with an update feed that a test chooses, in place of the one that a build knows.
#include "platform/linux/common/feed_configuration.h"

namespace tarvik {

std::optional<FeedSource> configuredFeed() {
    return FeedSource{TARVIK_FEED_PROGRAM, qEnvironmentVariable("TARVIK_TEST_FEED"),
                      qEnvironmentVariable("TARVIK_TEST_FEED_CA"), "20", "1.2"};
}

} // namespace tarvik
