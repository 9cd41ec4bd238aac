// Dispatch with both platforms' tables, and the decision tables of the window actions.
#include "actions/action_performer.h"
#include "actions/key_sequence.h"
#include "actions/window_actions.h"
#include "fakes/fake_action_ports.h"
#include "fakes/recording_log.h"

#include <gtest/gtest.h>
#include <map>

namespace tarvik {
namespace {

using enum ActionKind;

struct OneScreen final : Screens {
    std::vector<Screen> list = {{{0, 0, 1920, 1080}, 1}};
    std::vector<Screen> screens() const override { return list; }
    void onChange(std::function<void()>) override {}
};

struct World {
    explicit World(const Vocabulary& vocabulary)
        : performer(vocabulary, {keys, layout, shell, windows, workspace, screens}, log) {}

    void perform(ActionKind kind, std::optional<Point> point = {}) { performer.perform({kind, {}}, point); }
    /// Whether exactly this combination was posted since the last call, or nothing for an absent one.
    testing::AssertionResult posted(std::optional<KeyShortcut> expected) {
        const auto got = std::exchange(keys.posted, {});
        if (!expected)
            return got.empty() ? testing::AssertionSuccess() : testing::AssertionFailure() << "keys were posted";
        if (got.size() != 1)
            return testing::AssertionFailure() << got.size() << " combinations were posted";
        return got[0] == keySequence(*expected) ? testing::AssertionSuccess()
                                                : testing::AssertionFailure() << "other keys were posted";
    }

    FakeKeyPoster keys;
    FakeKeyboardLayout layout;
    FakeDesktopShell shell;
    FakeWindows windows;
    FakeWorkspace workspace;
    OneScreen screens;
    RecordingLog log;
    ActionPerformer performer;
};

TEST(ActionPerformer, macosPostsItsTableAndFallsBackWhereTheDockDoesNotAnswer) {
    World w(macosVocabulary());
    const std::map<ActionKind, KeyShortcut> shellFallbacks = {
        {missionControl, {126, 0x40000}}, {appExpose, {125, 0x40000}}, {showDesktop, {103, 0}}};
    for (const auto kind : allActionKinds()) {
        const auto& row = macosVocabulary()[kind];
        if (row.route == Route::window || row.route == Route::recorded)
            continue;
        w.perform(kind);
        const auto fallback = shellFallbacks.find(kind);
        const auto keys = fallback != shellFallbacks.end() ? std::optional(fallback->second)
                          : row.shortcut                   ? std::optional(row.shortcut->shortcut)
                                                           : std::nullopt;
        EXPECT_TRUE(w.posted(keys)) << rawValue(kind);
    }
    EXPECT_EQ(w.shell.asked, (std::vector{missionControl, appExpose, showDesktop, launchpad}));
    EXPECT_TRUE(w.log.contains("CoreDockSendNotification unavailable; sending ⌃↑"));
    EXPECT_TRUE(w.log.contains("CoreDockSendNotification unavailable; sending F11"));
    EXPECT_TRUE(w.log.contains("perform Do Nothing"));
    EXPECT_EQ(w.log.lines().back(), "perform Scroll to Bottom");
}

TEST(ActionPerformer, theDesktopComesFirstWhereItOffersTheAction) {
    World w(linuxVocabulary());
    w.shell.offers = {spaceLeft};
    w.perform(spaceLeft);
    EXPECT_TRUE(w.posted({}));
    w.perform(spaceRight);
    EXPECT_TRUE(w.posted(KeyShortcut{key::rightArrow, flags::control | flags::option}));
    EXPECT_EQ(w.log.lines().back(), "not offered by this desktop; sending Ctrl+Alt+Right");
    w.perform(launchpad);
    EXPECT_TRUE(w.posted({}));
    EXPECT_EQ(w.log.lines().back(), "not offered by this desktop");
}

TEST(ActionPerformer, lettersFollowTheLayoutAndRecordedKeysStayInPlace) {
    World w(linuxVocabulary());
    w.layout.letters = {{'w', 6}};
    w.perform(closeTab);
    EXPECT_TRUE(w.posted(KeyShortcut{6, flags::control}));
    w.perform(quitApp);
    EXPECT_TRUE(w.posted(KeyShortcut{key::q, flags::control})) << "a letter that the layout lacks is taken by position";
    w.performer.perform({custom, KeyShortcut{key::w, flags::control}}, {});
    EXPECT_TRUE(w.posted(KeyShortcut{key::w, flags::control}));
    w.perform(custom);
    EXPECT_TRUE(w.posted({}));
    EXPECT_EQ(w.log.lines().back(), "perform Custom (unset)");
}

TEST(ActionPerformer, terminalsKeepControlAndALetterForTheProgramInside) {
    World w(linuxVocabulary());
    w.workspace.terminal = true;
    w.perform(newTab);
    EXPECT_TRUE(w.posted(KeyShortcut{key::t, flags::control | flags::shift}));
    w.perform(closeTab);
    EXPECT_TRUE(w.posted(KeyShortcut{key::w, flags::control | flags::shift}));
    w.perform(reopenTab);
    EXPECT_TRUE(w.posted({}));
    w.perform(nextTab);
    EXPECT_TRUE(w.posted(KeyShortcut{key::pageDown, flags::control}));
}

TEST(ActionPerformer, windowActionsTakeTheGesturesStartAndFallBack) {
    World w(macosVocabulary());
    w.layout.letters = {{'m', key::m}};
    const KeyShortcut minimizeKeys{46, 0x100000};
    const KeyShortcut fullScreenKeys{3, 0x140000};
    w.perform(minimizeWindow, Point{10, 20});
    EXPECT_EQ(w.windows.asked.back(), (Point{10, 20}));
    EXPECT_EQ(w.log.lines().back(), "AX minimize failed; sending ⌘M");
    EXPECT_TRUE(w.posted(minimizeKeys));
    w.perform(fullScreen);
    EXPECT_TRUE(w.posted(fullScreenKeys)) << "the toggle falls back even without a window";
    w.perform(enterFullScreen);
    w.perform(exitFullScreen);
    EXPECT_TRUE(w.posted({}));
    w.windows.window.emplace();
    w.windows.window->error = -25200;
    w.perform(minimizeWindow);
    EXPECT_TRUE(w.posted(minimizeKeys));
    EXPECT_TRUE(w.log.contains("minimize [Editor] -> -25200"));
}

TEST(WindowActions, followTheirDecisionTables) {
    struct Row {
        ActionKind kind;
        std::optional<bool> state;
        int error;
        bool covers;
        std::vector<std::string> calls;
        bool fallback;
    };
    const Row rows[] = {
        {minimizeWindow, {}, 0, false, {"minimize"}, false}, {minimizeWindow, {}, 1, false, {"minimize"}, true},
        {fullScreen, true, 0, false, {"exit"}, false},       {fullScreen, false, 0, false, {"enter"}, false},
        {fullScreen, false, 1, false, {"enter"}, true},      {fullScreen, {}, 0, true, {}, true},
        {enterFullScreen, {}, 0, true, {}, false},           {enterFullScreen, {}, 0, false, {}, true},
        {enterFullScreen, true, 0, false, {}, false},        {enterFullScreen, false, 0, false, {"enter"}, false},
        {enterFullScreen, false, 1, false, {"enter"}, true}, {exitFullScreen, {}, 0, true, {}, true},
        {exitFullScreen, {}, 0, false, {}, false},           {exitFullScreen, false, 0, false, {}, false},
        {exitFullScreen, true, 0, false, {"exit"}, false},   {exitFullScreen, true, 1, false, {"exit"}, true},
    };
    for (const auto& row : rows) {
        FakeWindows windows;
        windows.window = FakeWindowState{row.error, row.state, Rect{0, 0, row.covers ? 1920.0 : 800.0, 1080}, {}};
        const auto window = windows.targetWindow({});
        RecordingLog log;
        const auto where = std::string(rawValue(row.kind)) + " line " + std::to_string(&row - rows);
        EXPECT_EQ(needsFallback(row.kind, window.get(), OneScreen(), log), row.fallback) << where;
        EXPECT_EQ(windows.window->calls, row.calls) << where;
        if (row.kind == enterFullScreen && row.state == true)
            EXPECT_TRUE(log.contains("enter full screen: window is already full screen"));
        if (row.kind == exitFullScreen && row.state == false)
            EXPECT_TRUE(log.contains("exit full screen: window is not full screen"));
        if (row.kind == exitFullScreen && row.error == 1)
            EXPECT_TRUE(log.contains("set full screen false on [Editor] -> 1"));
    }
}

TEST(WindowActions, aWindowMayMissTheScreenByTwoPoints) {
    const std::vector<Screen> screens = {{{0, 0, 1920, 1080}, 1}, {{1920, -100, 2560, 1440}, 2}};
    EXPECT_TRUE(coversScreen({0, 0, 1920, 1080}, screens));
    EXPECT_TRUE(coversScreen({0, 0, 1918, 1078}, screens));
    EXPECT_TRUE(coversScreen({-2, -2, 1924, 1084}, screens));
    EXPECT_FALSE(coversScreen({0, 0, 1917, 1080}, screens));
    EXPECT_FALSE(coversScreen({0, 0, 1920, 1077}, screens));
    EXPECT_FALSE(coversScreen({-3, 0, 1920, 1080}, screens));
    EXPECT_TRUE(coversScreen({1920, -100, 2556, 1436}, screens)) << "two points are four pixels at scale 2";
    EXPECT_FALSE(coversScreen({0, 0, 1920, 1080}, {}));
}

} // namespace
} // namespace tarvik
