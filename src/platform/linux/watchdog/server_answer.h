// Whether the X server has time for us.
#pragma once

#include "platform/linux/x11/x11_connection.h"

#include <chrono>

namespace tarvik {

/// Waits for one round trip, at most this long. A server that another client has grabbed, and then stopped, never
/// answers; whoever asked it anything would wait with it.
bool serverAnswers(const X11Connection& x, std::chrono::milliseconds longest);

} // namespace tarvik
