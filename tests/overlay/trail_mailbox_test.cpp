#include "overlay/trail_mailbox.h"

#include "fakes/fake_screens.h"
#include "fakes/fake_trail_panels.h"

#include <gtest/gtest.h>

#include <semaphore>
#include <thread>

namespace tarvik {
namespace {

struct TrailMailboxTest : testing::Test {
    fake::FakeScreens screens;
    fake::FakeTrailPanels panels;
    TrailOverlay overlay{screens, panels};
    int wakes = 0;
    TrailMailbox mailbox{[this] { ++wakes; }};
    std::shared_ptr<Path> path = std::make_shared<Path>();

    void grow() {
        path->append({static_cast<double>(path->size()), 5});
        mailbox.update({path, path->size()}, "label " + std::to_string(path->size()));
    }
    const fake::FakeTrailPanels::Record& panel() const { return *panels.records.at(0); }
};

TEST_F(TrailMailboxTest, DeliversTheNewestStateOnceAndWakesOnce) {
    for (int i = 0; i < 5; ++i)
        grow();
    EXPECT_EQ(wakes, 1);
    EXPECT_TRUE(mailbox.deliver(overlay));
    EXPECT_FALSE(mailbox.deliver(overlay));
    ASSERT_EQ(panel().draws.size(), 1u);
    EXPECT_EQ(panel().draws[0].points.count, 5u);
    EXPECT_EQ(panel().draws[0].label, "label 5");
    grow();
    EXPECT_EQ(wakes, 2);
}

TEST_F(TrailMailboxTest, WakesNobodyWhileThePainterRests) {
    grow();
    EXPECT_TRUE(mailbox.deliver(overlay));
    grow();
    grow();
    EXPECT_EQ(wakes, 1);
    EXPECT_TRUE(mailbox.deliver(overlay));
    EXPECT_EQ(panel().draws.back().points.count, 3u);
    mailbox.hide();
    EXPECT_TRUE(mailbox.deliver(overlay));
    EXPECT_FALSE(panel().visible);
    EXPECT_FALSE(mailbox.deliver(overlay));
    EXPECT_EQ(wakes, 1);
}

TEST_F(TrailMailboxTest, DrawsNothingThatWasSentBeforeAHide) {
    grow();
    mailbox.hide();
    mailbox.deliver(overlay);
    EXPECT_TRUE(panels.records.empty());

    grow();
    mailbox.deliver(overlay);
    grow();
    mailbox.hide();
    mailbox.deliver(overlay);
    EXPECT_EQ(panel().draws.size(), 1u);
    EXPECT_FALSE(panel().visible);
}

TEST_F(TrailMailboxTest, NextGestureMayOvertakeTheHidingOfTheLast) {
    grow();
    mailbox.deliver(overlay);
    mailbox.hide();
    const auto first = path;
    path = std::make_shared<Path>();
    grow();
    mailbox.deliver(overlay);
    EXPECT_NE(panel().draws.back().points.path, first);
    EXPECT_TRUE(panel().visible);
}

TEST_F(TrailMailboxTest, ClicksWithoutATrailWakeNobodyAndOldPathsAreLetGo) {
    mailbox.hide();
    EXPECT_EQ(wakes, 0);
    grow();
    mailbox.hide();
    mailbox.deliver(overlay);
    mailbox.hide();
    EXPECT_EQ(wakes, 1);
    EXPECT_EQ(path.use_count(), 1);
}

TEST(TrailMailboxThreads, PainterSeesWholePathsInOrderWhileTheTapWrites) {
    constexpr int gestures = 50;
    constexpr std::size_t length = 300;
    fake::FakeScreens screens;
    fake::FakeTrailPanels panels;
    TrailOverlay overlay(screens, panels);
    std::counting_semaphore<> woken{0};
    TrailMailbox mailbox([&] { woken.release(); });

    std::thread tap([&] {
        for (int gesture = 1; gesture <= gestures; ++gesture) {
            const auto path = std::make_shared<Path>();
            for (std::size_t i = 0; i < length; ++i) {
                path->append({static_cast<double>(i), static_cast<double>(gesture)});
                mailbox.update({path, path->size()}, std::to_string(gesture));
            }
            if (gesture < gestures)
                mailbox.hide();
        }
    });
    double newestGesture = 0;
    std::size_t newestCount = 0;
    std::size_t seen = 0;
    bool due = false;
    while (newestGesture < gestures || newestCount < length) {
        if (!due)
            woken.acquire();
        due = mailbox.deliver(overlay);
        if (panels.records.empty() || panels.records[0]->draws.size() == seen)
            continue;
        const auto& draw = panels.records[0]->draws.back();
        seen = panels.records[0]->draws.size();
        const double gesture = draw.points.back().y;
        EXPECT_EQ(draw.label, std::to_string(static_cast<int>(gesture)));
        for (std::size_t i = 0; i < draw.points.count; ++i)
            EXPECT_EQ(draw.points[i], (Point{static_cast<double>(i), gesture}));
        EXPECT_GE(gesture, newestGesture);
        EXPECT_TRUE(gesture > newestGesture || draw.points.count > newestCount);
        newestGesture = gesture;
        newestCount = draw.points.count;
    }
    tap.join();
}

} // namespace
} // namespace tarvik
