// The X server's stamps at the end of their range.
// The test framework first: Xlib's macros would take its names away.
#include <gtest/gtest.h>

#include "platform/linux/x11/x11_server_clock.h"

namespace tarvik {
namespace {

using std::chrono::milliseconds;

TEST(X11ServerClock, goesOnWhereTheStampsBeginAnew) {
    X11ServerClock clock;
    EXPECT_EQ(clock.widen(0xFFFFFFF0), milliseconds(0));
    EXPECT_EQ(clock.widen(0x10), milliseconds(32));
    EXPECT_EQ(clock.widen(0xFFFFFFFF), milliseconds(15)) << "a stamp that comes late";
    EXPECT_EQ(clock.widen(0xFFFF0000), milliseconds(15 + 0xFFFF0001LL)) << "49 days without a stamp";
    EXPECT_EQ(clock.widen(0xFFFF0000), milliseconds(15 + 0xFFFF0001LL));
    EXPECT_EQ(clock.widen(0), milliseconds(16 + (1LL << 32)));
}

} // namespace
} // namespace tarvik
