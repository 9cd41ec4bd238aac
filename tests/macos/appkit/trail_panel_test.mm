#import "platform/macos/appkit_screens.h"
#import "platform/macos/appkit_trail_panels.h"

#include "macos/appkit/appkit_test.h"
#include "overlay/trail_overlay.h"

namespace tarvik {
namespace {

using namespace recorder;

/// A second display to the left of the main one and lower, so that its origin is negative.
const Display mainDisplay{1, {{0, 0}, {1440, 900}}, 2};
const Display leftDisplay{7, {{-1920, -180}, {1920, 1080}}, 1};
/// The same from the top left of the main display.
const Screen mainScreen{{0, 0, 1440, 900}, 1};
const Screen leftScreen{{-1920, 0, 1920, 1080}, 1};

class TrailPanelTest : public AppKitTest {
protected:
    void SetUp() override {
        AppKitTest::SetUp();
        desk().displays = {mainDisplay, leftDisplay};
    }

    static NSPanel* panel() { return only<NSPanel>(); }
    static CAShapeLayer* shape() { return only<CAShapeLayer>(); }
    static NSVisualEffectView* pill() { return only<NSVisualEffectView>(); }
    static NSTextField* label() { return only<NSTextField>(); }
    static std::vector<CGPoint> drawn() { return pointsOf([shape() path]); }

    AppKitTrailPanels panels;
};

PathView pathOf(std::initializer_list<Point> points) {
    auto path = std::make_shared<Path>();
    for (const Point p : points)
        path->append(p);
    return {path, points.size()};
}

template <class T> std::vector<id> held(id object, const char* key) {
    std::vector<id> result;
    for (const auto& element : value<std::vector<Strong>>(object, key))
        result.push_back(element.get());
    return result;
}

TEST_F(TrailPanelTest, PanelLetsEverythingThroughAndStandsAboveEverything) {
    const auto made = panels.make(leftScreen);
    EXPECT_EQ(value<NSRect>(panel(), "contentRect"), leftDisplay.frame);
    EXPECT_EQ([panel() frame], leftDisplay.frame);
    EXPECT_FALSE(value<BOOL>(panel(), "displayed"));
    EXPECT_EQ([panel() styleMask], 128u);
    EXPECT_FALSE([panel() isOpaque]);
    EXPECT_EQ(value<Colour>([panel() backgroundColor], "colour").name, "clear");
    EXPECT_FALSE([panel() hasShadow]);
    EXPECT_TRUE([panel() ignoresMouseEvents]);
    EXPECT_EQ([panel() level], 1000);
    EXPECT_EQ([panel() collectionBehavior], 337u);
    EXPECT_FALSE([panel() hidesOnDeactivate]);
    EXPECT_FALSE([panel() isVisible]);
    EXPECT_EQ([[panel() contentView] frame], NSMakeRect(0, 0, 1920, 1080));
    EXPECT_TRUE([[panel() contentView] wantsLayer]);
}

TEST_F(TrailPanelTest, LineAndLabelLookAsTheyShould) {
    const auto made = panels.make(mainScreen);
    EXPECT_EQ([shape() fillColor], nullptr);
    EXPECT_EQ(colourOf([shape() strokeColor]), (Colour{"controlAccent", 0.85}));
    EXPECT_EQ([shape() lineWidth], 5);
    EXPECT_EQ(text8([shape() lineCap]), "round");
    EXPECT_EQ(text8([shape() lineJoin]), "round");
    EXPECT_EQ(colourOf([shape() shadowColor]), (Colour{"black", 1}));
    EXPECT_EQ([shape() shadowOpacity], 0.35F);
    EXPECT_EQ([shape() shadowRadius], 3);
    EXPECT_EQ([shape() shadowOffset], CGSizeMake(0, 0));
    EXPECT_EQ([shape() contentsScale], 2) << "blurred on a fine display";

    EXPECT_EQ([pill() material], 13);
    EXPECT_EQ([pill() blendingMode], 0);
    EXPECT_NE(std::find(calls().begin(), calls().end(), "blending mode"), calls().end());
    EXPECT_EQ([pill() state], 1);
    EXPECT_TRUE([pill() wantsLayer]);
    EXPECT_EQ([[pill() layer] cornerRadius], 10);
    EXPECT_TRUE([pill() isHidden]);
    EXPECT_EQ(value<CGFloat>([label() font], "size"), 15);
    EXPECT_EQ(value<CGFloat>([label() font], "weight"), NSFontWeightSemibold);
    EXPECT_EQ(value<Colour>([label() textColor], "colour").name, "label");
    EXPECT_EQ(text8([label() stringValue]), "");

    NSView* content = [panel() contentView];
    EXPECT_EQ(held<CALayer>([content layer], "sublayers"), std::vector<id>{shape()});
    EXPECT_EQ(held<NSView>(content, "subviews"), std::vector<id>{pill()});
    EXPECT_EQ(held<NSView>(pill(), "subviews"), std::vector<id>{label()});
}

TEST_F(TrailPanelTest, PathIsFlippedIntoThePanelAndJumpsThere) {
    const auto made = panels.make(leftScreen);
    made->draw(pathOf({{-1920, 0}, {-100, 1000}, {10, 20}}), std::nullopt, {10, 20});
    EXPECT_EQ(drawn(), (std::vector<CGPoint>{{0, 1080}, {1820, 80}, {1930, 1060}}));
    made->draw({}, std::nullopt, {});
    EXPECT_TRUE(drawn().empty());
    calls().clear();
    made->draw(pathOf({{1, 1}}), std::nullopt, {1, 1});
    EXPECT_EQ(calls(), (std::vector<std::string>{"begin", "disable actions", "path", "commit"}));
}

TEST_F(TrailPanelTest, PillStandsRightOfAndBelowThePointerInsideThePanel) {
    const auto made = panels.make(leftScreen);
    const auto at = [&](double x, double y) {
        made->draw({}, "← Back", {leftScreen.frame.x + x, leftScreen.frame.y + y});
        return [pill() frame];
    };
    // The text is 48 x 18, the pill 72 x 32.
    EXPECT_EQ(at(500, 300), NSMakeRect(518, 1080 - 300 - 32 - 18, 72, 32));
    EXPECT_FALSE([pill() isHidden]);
    EXPECT_EQ(text8([label() stringValue]), "← Back");
    EXPECT_EQ([label() frame], NSMakeRect(12, 7, 48, 18));
    EXPECT_EQ(at(-100, 300).origin.x, 8);
    EXPECT_EQ(at(1910, 300).origin.x, 1920 - 72 - 8);
    EXPECT_EQ(at(500, 1075).origin.y, 8);
    EXPECT_EQ(at(500, -100).origin.y, 1080 - 32 - 8);

    made->draw({}, "", {-1000, 300});
    EXPECT_FALSE([pill() isHidden]) << "an empty label is a label";
    EXPECT_EQ([pill() frame].size, CGSizeMake(24, 32));
    made->draw({}, std::nullopt, {-1000, 300});
    EXPECT_TRUE([pill() isHidden]);
}

TEST_F(TrailPanelTest, ShowsWithoutTakingTheFocusAndLeavesTheScreenWhenItGoes) {
    auto made = panels.make(mainScreen);
    made->show();
    EXPECT_TRUE(made->visible());
    EXPECT_TRUE([panel() isVisible]);
    EXPECT_EQ(desk().activations, 0);
    made->hide();
    EXPECT_FALSE(made->visible());
    made->show();
    made.reset(); // the recorder ends the test when a visible window goes
    EXPECT_TRUE(objectsOf([NSPanel class]).empty());
}

TEST_F(TrailPanelTest, OverlayHasOnePanelPerDisplayAndFollowsThem) {
    AppKitScreens screens;
    EXPECT_EQ(screens.screens(), (std::vector{mainScreen, leftScreen}));
    TrailOverlay overlay(screens, panels);
    overlay.update(pathOf({{-10, 20}, {-30, 40}}), "Back");
    auto windows = objectsOf([NSPanel class]);
    ASSERT_EQ(windows.size(), 2u);
    EXPECT_EQ([(NSPanel*)windows[0] frame], mainDisplay.frame);
    EXPECT_EQ([(NSPanel*)windows[1] frame], leftDisplay.frame);
    const auto pills = objectsOf([NSVisualEffectView class]);
    EXPECT_TRUE([(NSView*)pills[0] isHidden]);
    EXPECT_FALSE([(NSView*)pills[1] isHidden]);

    // The main display changes places with the other: everything is flipped at another height.
    desk().displays = {{7, {{0, 0}, {1920, 1080}}, 1}, {1, {{1920, 180}, {1440, 900}}, 2}};
    post([NSNotificationCenter defaultCenter], NSApplicationDidChangeScreenParametersNotification);
    EXPECT_EQ(screens.screens(), (std::vector<Screen>{{{0, 0, 1920, 1080}, 1}, {{1920, 0, 1440, 900}, 1}}));
    windows = objectsOf([NSPanel class]);
    ASSERT_EQ(windows.size(), 2u);
    EXPECT_FALSE([(NSPanel*)windows[1] isVisible]);
    EXPECT_EQ([(NSPanel*)windows[1] frame], NSMakeRect(1920, 180, 1440, 900));

    // A display without a number has no bounds that anybody could ask for.
    desk().displays[1].number = 0;
    post([NSNotificationCenter defaultCenter], NSApplicationDidChangeScreenParametersNotification);
    EXPECT_EQ(screens.screens().at(1).frame, Rect());

    desk().displays.clear();
    post([NSNotificationCenter defaultCenter], NSApplicationDidChangeScreenParametersNotification);
    EXPECT_TRUE(screens.screens().empty());
    overlay.update(pathOf({{1, 1}}), "");
    EXPECT_TRUE(objectsOf([NSPanel class]).empty());
}

TEST_F(TrailPanelTest, AnObserverThatIsGoneHearsNothing) {
    NSNotificationCenter* center = [NSNotificationCenter defaultCenter];
    int heard = 0;
    std::unique_ptr<Observation> second;
    // It goes while a notification is on its way to it.
    const Observation first(center, NSSystemColorsDidChangeNotification, [&] { second.reset(); });
    second = std::make_unique<Observation>(center, NSSystemColorsDidChangeNotification, [&] { ++heard; });
    post(center, NSSystemColorsDidChangeNotification);
    EXPECT_EQ(heard, 0);
}

} // namespace
} // namespace tarvik
