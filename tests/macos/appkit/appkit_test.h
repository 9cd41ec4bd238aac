// A test on a fresh simulated desktop that leaves nothing behind.
#pragma once

#include "macos/appkit/recorder/desk.h"

#include <gtest/gtest.h>

namespace tarvik {

/// The adapters of a test are gone when its body ends. Then no object, observer or monitor may be left: neither one
/// that was retained too often nor one that was never given back. Those that are given back too often end the program.
class AppKitTest : public testing::Test {
protected:
    void SetUp() override {
        recorder::resetDesk();
        pool_ = [[NSAutoreleasePool alloc] init];
    }
    void TearDown() override {
        EXPECT_EQ(recorder::observers(), 0u);
        EXPECT_EQ(recorder::keyMonitors(), 0u);
        EXPECT_TRUE(recorder::desk().statusItems.empty());
        [pool_ drain];
        recorder::resetDesk();
        EXPECT_EQ(recorder::liveObjects(), 0u);
        EXPECT_EQ(sim::liveObjects(), 0);
    }

private:
    NSAutoreleasePool* pool_ = nil;
};

inline std::string text8(NSString* string) { return string ? [string UTF8String] : "(nil)"; }

} // namespace tarvik

inline bool operator==(const CGPoint& a, const CGPoint& b) { return a.x == b.x && a.y == b.y; }
inline bool operator==(const CGSize& a, const CGSize& b) { return a.width == b.width && a.height == b.height; }
inline bool operator==(const CGRect& a, const CGRect& b) { return a.origin == b.origin && a.size == b.size; }
inline std::ostream& operator<<(std::ostream& out, const CGPoint& p) { return out << p.x << ',' << p.y; }
inline std::ostream& operator<<(std::ostream& out, const CGRect& r) {
    return out << r.origin << ' ' << r.size.width << 'x' << r.size.height;
}
