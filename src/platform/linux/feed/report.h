// What the program that looks for updates prints.
#pragma once

#include "platform/linux/feed/feed_request.h"

namespace tarvik {

/// "newest", the version, what people call it, and the address of a page about it, or "failed" and a sentence, each on
/// a line of its own.
QByteArray reportOn(const FeedAnswer& answer);

} // namespace tarvik
