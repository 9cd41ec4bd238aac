// The update feed that this build knows.
#pragma once

#include "platform/linux/common/feed_update_channel.h"

#include <optional>

namespace tarvik {

/// Nothing when the program was built without a feed. Needs a QCoreApplication.
std::optional<FeedSource> configuredFeed();

} // namespace tarvik
