// Actions on windows: which one is meant, the decisions, the fallbacks, and what is logged.
#include "macos/support/mac_actions.h"
#include "macos/support/mac_test.h"

namespace tarvik {
namespace {

using namespace sim;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr pid_t editor = 42;
constexpr std::size_t window = 0;
constexpr Point overWindow = {-100, 50};

class WindowsTest : public MacTest {
protected:
    void SetUp() override {
        MacTest::SetUp();
        AxNode node;
        node.process = editor;
        node.area = CGRectMake(-1440, 0, 1440, 900);
        node.attributes = {
            {"AXRole", "AXWindow"}, {"AXSubrole", "AXStandardWindow"}, {"AXMinimized", false}, {"AXFullScreen", false}};
        node.settable = {{"AXMinimized", true}};
        world().nodes = {node};
    }

    /// What the action did: the keys that it posted ("46" for ⌘M, "3" for ⌃⌘F) and its log.
    struct Outcome {
        std::vector<std::int64_t> keys;
        std::vector<std::string> log;
        std::vector<std::string> writes;
    };
    Outcome perform(ActionKind kind, std::optional<Point> point = overWindow) {
        RecordingLog log;
        world().posted.clear();
        world().axCalls.clear();
        {
            MacActions mac(log);
            mac.screens.change({{{0, 0, 1920, 1080}, 1}, {{-1440, 0, 1440, 900}, 1}});
            mac.applications.frontmost = frontmost;
            mac.applications.names = {{editor, "Editor"}};
            mac.performer.perform({kind, {}}, point);
        }
        Outcome outcome;
        outcome.log = log.lines();
        outcome.log.erase(outcome.log.begin());
        for (const auto& [place, event] : world().posted) {
            const auto code = event.integer(kCGKeyboardEventKeycode);
            if (event.type == kCGEventKeyDown && code != 55 && code != 59)
                outcome.keys.push_back(code);
        }
        for (const auto& [what, timeout] : world().axCalls) {
            const bool write = what.rfind("write", 0) == 0;
            EXPECT_EQ(timeout, write ? 2.0F : 0.25F) << what;
            if (write)
                outcome.writes.push_back(what);
        }
        return outcome;
    }
    void set(const std::string& attribute, AxNode::Value value) { world().nodes[window].attributes[attribute] = value; }
    void frame(double x, double y, double width, double height) {
        set("AXPosition", CGPointMake(x, y));
        set("AXSize", CGSizeMake(width, height));
    }

    std::optional<pid_t> frontmost;
    const std::string description =
        "[Editor] role=AXWindow subrole=AXStandardWindow minimized=0 settable=true fullscreen=0";
};

TEST_F(WindowsTest, minimizesAndDescribes) {
    const auto done = perform(ActionKind::minimizeWindow);
    EXPECT_THAT(done.writes, ElementsAre("write AXMinimized true"));
    EXPECT_THAT(done.keys, IsEmpty());
    EXPECT_THAT(done.log, ElementsAre("minimize [Editor] role=AXWindow subrole=AXStandardWindow minimized=1 "
                                      "settable=true fullscreen=0 -> 0"));
}

TEST_F(WindowsTest, aMinimizeThatFailsIsDoneByKeys) {
    world().nodes[window].writeErrors["AXMinimized"] = kAXErrorCannotComplete;
    const auto failed = perform(ActionKind::minimizeWindow);
    EXPECT_THAT(failed.log, ElementsAre("minimize " + description + " -> -25204", "AX minimize failed; sending ⌘#46"));
    EXPECT_THAT(failed.keys, ElementsAre(46));

    world().layout->keys = {{46, u"m"}};
    const auto none = perform(ActionKind::minimizeWindow, Point{5000, 5000});
    EXPECT_THAT(none.log, ElementsAre("AX minimize failed; sending ⌘M"));
    EXPECT_THAT(none.keys, ElementsAre(46));
}

TEST_F(WindowsTest, describesWhatCannotBeRead) {
    auto& node = world().nodes[window];
    node.process = 7;
    node.attributes = {{"AXRole", "AXWindow"},
                       {"AXSubrole", kAXErrorNoValue},
                       {"AXMinimized", 2.0},
                       {"AXFullScreen", kAXErrorInvalidUIElement}};
    node.settable = {{"AXMinimized", kAXErrorCannotComplete}};
    node.writeErrors["AXMinimized"] = kAXErrorFailure;
    EXPECT_EQ(perform(ActionKind::minimizeWindow).log.front(),
              "minimize [pid 7] role=AXWindow subrole=err-25212 minimized=<number 2.000000> settable=false "
              "fullscreen=err-25202 -> -25200");
    node.settable = {{"AXMinimized", false}};
    EXPECT_THAT(perform(ActionKind::minimizeWindow).log.front(), testing::HasSubstr("settable=false"));
}

TEST_F(WindowsTest, togglesByTheStateAndFallsBackInEveryOtherCase) {
    const auto on = perform(ActionKind::fullScreen);
    EXPECT_THAT(on.writes, ElementsAre("write AXFullScreen true"));
    EXPECT_THAT(on.keys, IsEmpty());
    EXPECT_THAT(on.log, ElementsAre("set full screen true on [Editor] role=AXWindow subrole=AXStandardWindow "
                                    "minimized=0 settable=true fullscreen=1 -> 0"));
    const auto off = perform(ActionKind::fullScreen);
    EXPECT_THAT(off.writes, ElementsAre("write AXFullScreen false"));
    EXPECT_THAT(off.keys, IsEmpty());

    world().nodes[window].writeErrors["AXFullScreen"] = kAXErrorFailure;
    EXPECT_THAT(perform(ActionKind::fullScreen).keys, ElementsAre(3)) << "refused";
    set("AXFullScreen", "no number");
    EXPECT_THAT(perform(ActionKind::fullScreen).keys, ElementsAre(3)) << "unknown";
    EXPECT_THAT(perform(ActionKind::fullScreen, {}).keys, ElementsAre(3)) << "no window";
}

TEST_F(WindowsTest, entersOrLeavesByTheState) {
    set("AXFullScreen", 1.0);
    const auto already = perform(ActionKind::enterFullScreen);
    EXPECT_THAT(already.log, ElementsAre("enter full screen: window is already full screen"));
    EXPECT_THAT(already.writes, IsEmpty());
    EXPECT_THAT(already.keys, IsEmpty());
    EXPECT_THAT(perform(ActionKind::exitFullScreen).writes, ElementsAre("write AXFullScreen false"));

    set("AXFullScreen", 0.0);
    const auto notAtAll = perform(ActionKind::exitFullScreen);
    EXPECT_THAT(notAtAll.log, ElementsAre("exit full screen: window is not full screen"));
    EXPECT_THAT(notAtAll.writes, IsEmpty());
    EXPECT_THAT(notAtAll.keys, IsEmpty());
    EXPECT_THAT(perform(ActionKind::enterFullScreen).writes, ElementsAre("write AXFullScreen true"));

    world().nodes[window].writeErrors["AXFullScreen"] = kAXErrorFailure;
    EXPECT_THAT(perform(ActionKind::exitFullScreen).keys, ElementsAre(3));
    set("AXFullScreen", false);
    EXPECT_THAT(perform(ActionKind::enterFullScreen).keys, ElementsAre(3));
    for (const auto kind : {ActionKind::enterFullScreen, ActionKind::exitFullScreen})
        EXPECT_THAT(perform(kind, {}).keys, IsEmpty()) << "without a window nothing";
}

TEST_F(WindowsTest, anUnknownStateIsJudgedByTheFrameWithinTwoPoints) {
    set("AXFullScreen", kAXErrorAttributeUnsupported);
    struct Case {
        Rect frame;
        bool covers;
    };
    const Case cases[] = {
        {{0, 0, 1920, 1080}, true},     {{0, 0, 1918, 1078}, true},    {{0, 0, 1917, 1080}, false},
        {{0, 0, 1920, 1077}, false},    {{-2, -2, 1924, 1084}, true},  {{-2, -2, 1925, 1084}, false},
        {{-3, 0, 1920, 1080}, false},   {{0, 3, 1920, 1080}, false},   {{-1440, 0, 1440, 900}, true},
        {{-1440, -2, 1440, 904}, true}, {{100, 100, 800, 600}, false},
    };
    for (const auto& [at, covers] : cases) {
        SCOPED_TRACE(testing::Message() << at.x << ',' << at.y << ' ' << at.width << 'x' << at.height);
        frame(at.x, at.y, at.width, at.height);
        EXPECT_EQ(perform(ActionKind::enterFullScreen).keys.empty(), covers);
        EXPECT_EQ(perform(ActionKind::exitFullScreen).keys.empty(), !covers);
    }
    frame(0, 0, 1920, 1080);
    set("AXSize", kAXErrorNoValue);
    EXPECT_THAT(perform(ActionKind::enterFullScreen).keys, ElementsAre(3)) << "no frame covers nothing";
    frame(0, 0, 1920, 1080);
    set("AXPosition", CGSizeMake(0, 0));
    EXPECT_THAT(perform(ActionKind::exitFullScreen).keys, IsEmpty());
}

TEST_F(WindowsTest, theWindowUnderThePointComesFirst) {
    AxNode button;
    button.process = editor;
    button.area = CGRectMake(-1400, 10, 20, 20);
    button.attributes = {{"AXRole", "AXButton"}, {"AXWindow", AxNode::Link{1}}};
    world().nodes.insert(world().nodes.begin(), button);
    AxNode application;
    application.attributes = {{"AXFocusedWindow", AxNode::Link{3}}};
    AxNode focused = world().nodes[1];
    focused.area = {};
    world().nodes.push_back(application);
    world().nodes.push_back(focused);
    world().applications = {{99, 2}};
    frontmost = 99;
    const auto minimized = [](std::size_t node) {
        return std::get<bool>(world().nodes[node].attributes["AXMinimized"]);
    };

    perform(ActionKind::minimizeWindow, Point{-1395, 15});
    EXPECT_TRUE(minimized(1)) << "the window of a button";
    EXPECT_FALSE(minimized(3));
    perform(ActionKind::minimizeWindow, Point{3000, 3000});
    EXPECT_TRUE(minimized(3)) << "nothing there: the active application's focused window";
    world().nodes[3].attributes["AXMinimized"] = false;
    perform(ActionKind::minimizeWindow, std::nullopt);
    EXPECT_TRUE(minimized(3)) << "no point";
    world().nodes[0].attributes.erase("AXWindow");
    world().nodes[3].attributes["AXMinimized"] = false;
    perform(ActionKind::minimizeWindow, Point{-1395, 15});
    EXPECT_TRUE(minimized(3)) << "something that lies in no window";
    world().nodes[2].attributes["AXFocusedWindow"] = kAXErrorNoValue;
    EXPECT_THAT(perform(ActionKind::minimizeWindow, std::nullopt).keys, ElementsAre(46));
}

TEST_F(WindowsTest, withoutThePermissionThereAreNoWindows) {
    world().trusted = false;
    EXPECT_THAT(perform(ActionKind::minimizeWindow).keys, ElementsAre(46));
    EXPECT_THAT(perform(ActionKind::fullScreen).keys, ElementsAre(3));
    EXPECT_THAT(perform(ActionKind::enterFullScreen).keys, IsEmpty());
    EXPECT_THAT(perform(ActionKind::exitFullScreen).keys, IsEmpty());
}

} // namespace
} // namespace tarvik
