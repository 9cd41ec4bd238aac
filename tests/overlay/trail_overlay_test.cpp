#include "overlay/trail_overlay.h"

#include "fakes/fake_screens.h"
#include "fakes/fake_trail_panels.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

const Screen left{{0, 0, 1000, 800}, 1};
const Screen right{{1000, 0, 1920, 1080}, 2};

PathView pathOf(std::initializer_list<Point> points) {
    auto path = std::make_shared<Path>();
    for (const Point p : points)
        path->append(p);
    return {path, points.size()};
}

struct TrailOverlayTest : testing::Test {
    fake::FakeScreens screens{{left, right}};
    fake::FakeTrailPanels panels;
    std::optional<TrailOverlay> overlay{std::in_place, screens, panels};

    const fake::FakeTrailPanels::Record& panel(std::size_t index) const { return *panels.records.at(index); }
};

TEST_F(TrailOverlayTest, FirstUpdateMakesOnePanelPerScreenAndShowsThem) {
    EXPECT_TRUE(panels.records.empty());
    overlay->update(pathOf({{10, 20}, {30, 40}}), "Back");
    ASSERT_EQ(panels.records.size(), 2u);
    EXPECT_EQ(panel(0).screen, left);
    EXPECT_EQ(panel(1).screen, right);
    EXPECT_TRUE(panel(0).visible && panel(1).visible);

    overlay->update(pathOf({{10, 20}, {30, 40}, {50, 60}}), "Back");
    EXPECT_EQ(panels.records.size(), 2u);
    EXPECT_EQ(panel(0).shown, 1);
    EXPECT_EQ(panel(0).draws.back().points.count, 3u);
}

TEST_F(TrailOverlayTest, OnlyTheScreenUnderThePointerGetsTheLabel) {
    overlay->update(pathOf({{10, 20}, {999.5, 40}}), "Back");
    EXPECT_EQ(panel(0).draws.back().label, "Back");
    EXPECT_EQ(panel(1).draws.back().label, std::nullopt);
    EXPECT_EQ(panel(1).draws.back().head, (Point{999.5, 40}));
    EXPECT_EQ(panel(1).draws.back().points.count, 2u);

    overlay->update(pathOf({{10, 20}, {1000, 40}}), "");
    EXPECT_EQ(panel(0).draws.back().label, std::nullopt);
    EXPECT_EQ(panel(1).draws.back().label, "");
}

TEST_F(TrailOverlayTest, EmptyPathHasItsHeadAtTheOrigin) {
    overlay->update({}, "Back");
    EXPECT_EQ(panel(0).draws.back().head, (Point{0, 0}));
    EXPECT_EQ(panel(0).draws.back().label, "Back");
}

TEST_F(TrailOverlayTest, HidesWhatIsVisibleAndShowsItAgain) {
    overlay->hide();
    overlay->update(pathOf({{1, 1}}), "");
    overlay->hide();
    overlay->hide();
    EXPECT_EQ(panel(0).hidden, 1);
    EXPECT_FALSE(panel(0).visible || panel(1).visible);
    overlay->update(pathOf({{1, 1}}), "");
    EXPECT_EQ(panels.records.size(), 2u);
    EXPECT_EQ(panel(0).shown, 2);
}

TEST_F(TrailOverlayTest, ScreenChangeDropsShownPanelsAndTheNextUpdateShowsNewOnes) {
    overlay->update(pathOf({{1, 1}}), "");
    screens.change({right});
    EXPECT_TRUE(panel(0).destroyed && panel(1).destroyed);
    EXPECT_FALSE(panel(0).visible || panel(1).visible);
    ASSERT_EQ(panels.records.size(), 3u);
    EXPECT_EQ(panel(2).shown, 0);
    overlay->update(pathOf({{1500, 1}}), "Back");
    EXPECT_TRUE(panel(2).visible);
    EXPECT_EQ(panel(2).draws.back().label, "Back");
}

TEST_F(TrailOverlayTest, WithoutScreensNothingIsDrawnUntilOneComes) {
    screens.change({});
    overlay->update(pathOf({{1, 1}}), "");
    overlay->hide();
    EXPECT_TRUE(panels.records.empty());
    screens.change({left});
    overlay->update(pathOf({{1, 1}}), "");
    EXPECT_TRUE(panel(0).visible);
}

TEST_F(TrailOverlayTest, LeavesNothingBehind) {
    overlay->update(pathOf({{1, 1}}), "");
    overlay.reset();
    EXPECT_EQ(panel(0).hidden, 1);
    EXPECT_TRUE(panel(0).destroyed);
    EXPECT_FALSE(screens.watched());
}

} // namespace
} // namespace tarvik
