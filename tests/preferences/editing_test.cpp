// What the window's lists and recorders do to the settings.
#include "fakes/fake_defaults_store.h"
#include "fakes/fake_login_item.h"
#include "preferences/view/excluded_apps.h"
#include "preferences/view/gesture_list.h"
#include "preferences/view/gesture_recording.h"
#include "preferences/view/shortcut_capture.h"

#include <gmock/gmock.h>

#include <functional>
#include <vector>

namespace tarvik {
namespace {

using testing::ElementsAre;

class WindowTest : public testing::Test {
protected:
    FakeDefaultsStore store;
    Settings settings = settingsOver(store);
    KeyNames keyNames{KeyStyle::words, [](std::uint16_t code) {
                          return code == key::t ? std::optional<std::string>("T") : std::nullopt;
                      }};
    GestureList gestures{settings, keyNames};

    std::vector<std::string> listed() const {
        std::vector<std::string> rows;
        for (int row = 0; row < gestures.rowCount(); ++row)
            rows.push_back(gestures.data(gestures.index(row, 0), GestureList::gesture).toString().toStdString());
        return rows;
    }
};

class GestureListTest : public WindowTest {};

TEST_F(GestureListTest, ShortGesturesComeFirstAndEqualLengthsInPlainOrder) {
    settings.setMappings({{"L", {}}, {"R", {}}, {"UD", {}}, {"DL", {}}, {"U", {}}});
    EXPECT_THAT(listed(), ElementsAre("L", "R", "U", "DL", "UD"));
}

TEST_F(GestureListTest, TellsOfTheRowsThatCameWentAndChangedAndOfNoOthers) {
    settings.setMappings({{"L", {}}, {"R", {}}, {"UD", {}}});
    std::vector<std::string> told;
    const auto tell = [&told](const char* what, int row) { told.push_back(what + std::to_string(row)); };
    QObject::connect(&gestures, &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex&, int first, int) { tell("inserted ", first); });
    QObject::connect(&gestures, &QAbstractItemModel::rowsRemoved,
                     [&](const QModelIndex&, int first, int) { tell("removed ", first); });
    QObject::connect(&gestures, &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& at) { tell("changed ", at.row()); });

    settings.setMappings({{"L", {}}, {"U", {}}, {"UD", {ActionKind::back, {}}}, {"UDU", {}}});
    EXPECT_THAT(told, ElementsAre("removed 1", "inserted 1", "changed 2", "inserted 3"));
    EXPECT_THAT(listed(), ElementsAre("L", "U", "UD", "UDU"));

    told.clear();
    settings.setMappings({{"L", {}}});
    EXPECT_THAT(told, ElementsAre("removed 1"));
    EXPECT_THAT(listed(), ElementsAre("L"));
}

TEST_F(GestureListTest, AShortcutSurvivesAnotherAction) {
    const GestureAction shortcut{ActionKind::custom, KeyShortcut{key::t, flags::command}};
    settings.setMappings({{"L", shortcut}});
    gestures.setKind("L", static_cast<int>(ActionKind::back));
    EXPECT_EQ(settings.mappings().at("L").kind, ActionKind::back);
    gestures.setKind("L", static_cast<int>(ActionKind::custom));
    EXPECT_EQ(settings.mappings().at("L"), shortcut);
    EXPECT_EQ(gestures.data(gestures.index(0, 0), GestureList::shortcut).toString(), "Super+T");
}

class TypedKeys : public KeyMonitor {
public:
    std::function<void(TypedKey)> handler;
    void start(std::function<void(TypedKey)> taken) override { handler = std::move(taken); }
    void stop() override { handler = {}; }
    void type(std::optional<std::uint16_t> code, std::uint64_t modifiers) const {
        const auto copy = handler;
        copy({code, modifiers});
    }
};

class ShortcutCaptureTest : public WindowTest {
protected:
    TypedKeys keys;
    ShortcutCapture capture{gestures, keys};

    std::optional<KeyShortcut> shortcutOf(const char* gesture) const { return settings.mappings().at(gesture).custom; }
};

TEST_F(ShortcutCaptureTest, KeepsTheFourModifiersOnly) {
    constexpr std::uint64_t capsLock = 0x10000;
    capture.start("L");
    keys.type(key::t, capsLock | flags::numericPad | flags::secondaryFunction | flags::command);
    EXPECT_EQ(shortcutOf("L"), (KeyShortcut{key::t, flags::command}));
    EXPECT_FALSE(capture.active());
    EXPECT_FALSE(keys.handler);
}

TEST_F(ShortcutCaptureTest, EscapeKeepsWhatThereWas) {
    capture.start("L");
    keys.type(key::t, 0);
    capture.start("L");
    keys.type(key::escape, flags::control);
    EXPECT_EQ(shortcutOf("L"), (KeyShortcut{key::t, 0}));
    EXPECT_FALSE(capture.active());
}

TEST_F(ShortcutCaptureTest, AKeyWithoutAPositionIsRefusedAndTheNextOneCounts) {
    capture.start("L");
    keys.type(std::nullopt, flags::control);
    EXPECT_TRUE(capture.refused());
    EXPECT_TRUE(capture.active());
    EXPECT_EQ(shortcutOf("L"), std::nullopt);
    keys.type(key::t, 0);
    EXPECT_EQ(shortcutOf("L"), (KeyShortcut{key::t, 0}));
    EXPECT_FALSE(capture.refused());
}

TEST_F(ShortcutCaptureTest, StartingInAnotherRowEndsTheFirst) {
    capture.start("L");
    capture.start("R");
    keys.type(key::t, 0);
    EXPECT_EQ(shortcutOf("L"), std::nullopt);
    EXPECT_EQ(shortcutOf("R"), (KeyShortcut{key::t, 0}));
}

struct PendingTasks : TaskQueue {
    std::vector<std::function<void()>> tasks;
    void post(std::function<void()> task) override { tasks.push_back(std::move(task)); }
    void run() {
        for (const auto& task : std::exchange(tasks, {}))
            task();
    }
};

struct Activations : Activation {
    int count = 0;
    void activate() override { ++count; }
};

class GestureRecordingTest : public WindowTest {
protected:
    PendingTasks mainQueue;
    Activations activation;
    GestureRecorder::Handler engine;
    GestureRecorder recorder{[this](GestureRecorder::Handler handler) { engine = std::move(handler); }, mainQueue};
    GestureRecording recording{settings, recorder, activation};

    /// As the engine does it: once for each request.
    void draw(const char* directions) {
        if (const auto handler = std::exchange(engine, {}))
            handler(directions);
    }
};

TEST_F(GestureRecordingTest, ANewGestureGetsARowThatDoesNothing) {
    recording.start();
    EXPECT_TRUE(recording.active());
    draw("RUL");
    mainQueue.run();
    EXPECT_EQ(settings.mappings().at("RUL"), GestureAction());
    EXPECT_EQ(recording.highlighted(), "RUL");
    EXPECT_FALSE(recording.active());
    EXPECT_EQ(activation.count, 1);
}

TEST_F(GestureRecordingTest, AGestureThatIsThereKeepsItsAction) {
    const auto before = settings.mappings();
    recording.start();
    draw("UD");
    mainQueue.run();
    EXPECT_EQ(settings.mappings(), before);
    EXPECT_EQ(recording.highlighted(), "UD");
}

TEST_F(GestureRecordingTest, ACancelThatCrossesTheAnswerWins) {
    recording.start();
    draw("RUL");
    recording.cancel();
    mainQueue.run();
    EXPECT_FALSE(settings.mappings().contains("RUL"));
    EXPECT_EQ(recording.highlighted(), "");
    EXPECT_EQ(activation.count, 0);
}

TEST(ApplicationsToExclude, OrdinaryOnesByNameWithoutTheProgramItself) {
    const std::vector<RunningApplication> running = {
        {1, "b.second", "alpha", true},   {2, "a.agent", "Agent", false}, {3, "zed", "Zed", true},
        {4, std::nullopt, "No id", true}, {5, "tarvik", "Tarvik", true},  {6, "nameless", std::nullopt, true},
        {7, "a.first", "alpha", true}};
    std::vector<std::int64_t> offered;
    for (const auto& application : applicationsToExclude(running, "tarvik"))
        offered.push_back(application.processId);
    EXPECT_THAT(offered, ElementsAre(6, 3, 1, 7));
}

struct NoApplications : Applications {
    std::vector<RunningApplication> running() override { return {}; }
    std::optional<InstalledApplication> installed(std::string_view id, int) override {
        return id == "known" ? std::optional(InstalledApplication{"Known", {}}) : std::nullopt;
    }
    std::string ownId() const override { return "tarvik"; }
};

TEST_F(WindowTest, ExcludedAppsKeepTheirOrderAndHaveNoDuplicates) {
    NoApplications applications;
    ExcludedApps apps(settings, applications);
    for (const auto* id : {"z.gone", "known", "z.gone"})
        apps.add(id);
    EXPECT_THAT(settings.excludedApps(), ElementsAre("z.gone", "known"));
    EXPECT_EQ(apps.data(apps.index(0, 0), ExcludedApps::name), "z.gone");
    EXPECT_EQ(apps.data(apps.index(0, 0), ExcludedApps::installed), false);
    EXPECT_EQ(apps.data(apps.index(1, 0), ExcludedApps::name), "Known");
    apps.remove("z.gone");
    EXPECT_THAT(settings.excludedApps(), ElementsAre("known"));
}

} // namespace
} // namespace tarvik
