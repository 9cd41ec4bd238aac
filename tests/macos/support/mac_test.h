// What every test of the macOS adapters stands on: a fresh simulated Mac, and no reference left over.
#pragma once

#include "macos/sim/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik {

/// Adapters are members of the derived tests' functions, or of fixtures that end before `TearDown` counts.
class MacTest : public testing::Test {
protected:
    void SetUp() override {
        sim::reset();
        before_ = sim::liveObjects();
    }
    void TearDown() override {
        sim::runMainQueue();
        EXPECT_EQ(sim::liveObjects(), before_) << "objects are left over";
        EXPECT_EQ(sim::observers(), 0U) << "somebody still observes";
        EXPECT_EQ(sim::world().stuck, 0) << "input got stuck in a tap";
    }

private:
    int before_ = 0;
};

} // namespace tarvik
