#include "support/version_order.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(VersionOrder, olderComesFirst) {
    constexpr const char* ordered[] = {"",
                                       "0.1",
                                       "0.9.9",
                                       "1.0a",
                                       "1.0b1",
                                       "1.0b2",
                                       "1.0",
                                       "1.0.1",
                                       "1.2",
                                       "1.10",
                                       "2",
                                       "10.0",
                                       "99999999999999999999999",
                                       "100000000000000000000000"};
    for (std::size_t i = 0; i < std::size(ordered); ++i) {
        for (std::size_t j = 0; j < std::size(ordered); ++j)
            EXPECT_EQ(compareVersions(ordered[i], ordered[j]), std::weak_ordering(i <=> j))
                << ordered[i] << " and " << ordered[j];
    }
}

TEST(VersionOrder, differentWaysToWriteTheSame) {
    constexpr const char* same[][2] = {
        {"1.0", "1"}, {"1.2", "1-2"}, {"01.002", "1.2"}, {"1.0.0.0", "1.0"}, {"1.0 b1", "1.0b1"}};
    for (const auto& [a, b] : same)
        EXPECT_EQ(compareVersions(a, b), std::weak_ordering::equivalent) << a << " and " << b;
}

} // namespace
} // namespace tarvik
