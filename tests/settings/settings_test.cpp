#include "settings/settings.h"

#include "fakes/fake_defaults_store.h"
#include "fakes/fake_login_item.h"
#include "model/gesture_table_json.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Data = FakeDefaultsStore::Data;

GestureTable stored(const FakeDefaultsStore& store) {
    return decodeGestureTable(store.data("mappings").value()).value();
}

TEST(Settings, aFirstStartHasTheDefaultsAndWritesNothing) {
    FakeDefaultsStore store;
    const auto settings = settingsOver(store);
    EXPECT_TRUE(settings.enabled());
    EXPECT_EQ(settings.triggerButton(), TriggerButton::right);
    EXPECT_TRUE(settings.showTrail());
    EXPECT_EQ(settings.minStroke(), 30.0);
    EXPECT_EQ(settings.scrollBinding(), ScrollBinding::tabs);
    EXPECT_TRUE(settings.excludedApps().empty());
    EXPECT_FALSE(settings.reverseVertical());
    EXPECT_FALSE(settings.reverseHorizontal());
    EXPECT_EQ(settings.dragDelay().count(), 0);
    EXPECT_EQ(settings.mappings().size(), 16U);
    EXPECT_EQ(settings.mappings().at("LD").kind, ActionKind::exitFullScreen);
    EXPECT_EQ(settings.mappings().at("RL").kind, ActionKind::previousApp);
    EXPECT_TRUE(store.writes.empty());
}

TEST(Settings, unknownWordsFallBack) {
    FakeDefaultsStore store;
    store.values = {{"triggerButton", "Middle"}, {"scrollBinding", "desktops"}, {"enabled", std::string("maybe")}};
    const auto settings = settingsOver(store);
    EXPECT_EQ(settings.triggerButton(), TriggerButton::right);
    EXPECT_EQ(settings.scrollBinding(), ScrollBinding::tabs);
    EXPECT_TRUE(settings.enabled());
    store.values = {{"triggerButton", "middle"}, {"scrollBinding", "none"}};
    const auto known = settingsOver(store);
    EXPECT_EQ(known.triggerButton(), TriggerButton::middle);
    EXPECT_EQ(known.scrollBinding(), ScrollBinding::none);
}

TEST(Settings, everyChangeIsToldAndWrittenAtOnce) {
    FakeDefaultsStore store;
    auto settings = settingsOver(store);
    std::vector<Setting> told;
    auto subscription = settings.observe([&](Setting setting) { told.push_back(setting); });
    settings.setEnabled(false);
    settings.setTriggerButton(TriggerButton::middle);
    settings.setShowTrail(false);
    settings.setMinStroke(12.5);
    settings.setScrollBinding(ScrollBinding::windows);
    settings.setExcludedApps({"org.example.Editor"});
    settings.setReverseVertical(true);
    settings.setReverseHorizontal(true);
    settings.setDragDelay(350);
    settings.setMappings({{"U", {ActionKind::quitApp, {}}}});
    ASSERT_EQ(told.size(), 10U);
    for (std::size_t i = 0; i < told.size(); ++i)
        EXPECT_EQ(told[i], static_cast<Setting>(i));
    const std::map<std::string, FakeDefaultsStore::Value, std::less<>> expected = {
        {"enabled", false},           {"triggerButton", "middle"},
        {"showTrail", false},         {"minStroke", 12.5},
        {"scrollBinding", "windows"}, {"excludedApps", std::vector<std::string>{"org.example.Editor"}},
        {"reverseVertical", true},    {"reverseHorizontal", true},
        {"dragDelay", 350.0},         {"mappings", Data{R"({"U":{"kind":"quitApp"}})"}},
    };
    EXPECT_EQ(store.values, expected);
    subscription.reset();
    settings.setEnabled(true);
    EXPECT_EQ(told.size(), 10U);
    const auto again = settingsOver(store);
    EXPECT_EQ(again.minStroke(), 12.5);
    EXPECT_EQ(again.dragDelay().count(), 350);
    EXPECT_TRUE(again.reverseHorizontal());
    EXPECT_EQ(again.excludedApps(), std::vector<std::string>{"org.example.Editor"});
}

TEST(Settings, theDelayOfADragIsKeptInItsRange) {
    for (const auto& [stored, taken] :
         std::map<double, int>{{-300, 0}, {0, 0}, {0.4, 200}, {199, 200}, {300.4, 300}, {1000, 1000}, {1e300, 1000}}) {
        FakeDefaultsStore store;
        store.values = {{"dragDelay", stored}};
        EXPECT_EQ(settingsOver(store).dragDelay().count(), taken) << stored;
        EXPECT_TRUE(store.writes.empty()) << "what is stored stays";
    }
}

TEST(Settings, anOlderTableGetsTheNewGesturesOnce) {
    FakeDefaultsStore store;
    store.setData("mappings", R"({"U":{"kind":"quitApp"}})");
    auto settings = settingsOver(store);
    const GestureTable expected = {{"U", {ActionKind::quitApp, {}}},
                                   {"LD", {ActionKind::exitFullScreen, {}}},
                                   {"RD", {ActionKind::enterFullScreen, {}}}};
    EXPECT_EQ(settings.mappings(), expected);
    EXPECT_EQ(stored(store), expected);
    EXPECT_EQ(store.boolean("addedExitFullScreen"), true);
    EXPECT_EQ(store.boolean("addedEnterFullScreen"), true);

    settings.setMappings({{"U", {ActionKind::quitApp, {}}}});
    EXPECT_EQ(settingsOver(store).mappings().size(), 1U) << "what the user removed stays removed";
}

TEST(Settings, theUsersOwnBindingIsLeftAlone) {
    FakeDefaultsStore store;
    store.setData("mappings", R"({"LD":{"kind":"none"}})");
    const auto settings = settingsOver(store);
    EXPECT_EQ(settings.mappings().at("LD").kind, ActionKind::none);
    EXPECT_EQ(settings.mappings().at("RD").kind, ActionKind::enterFullScreen);
    EXPECT_EQ(store.boolean("addedExitFullScreen"), true);
}

TEST(Settings, aTableThatCannotBeReadIsSetAsideBeforeItIsReplaced) {
    FakeDefaultsStore store;
    const std::string broken = R"({"U":{"kind":"quitApp"},"L":{"kind":"fly"}})";
    store.setData("mappings", broken);
    store.writes.clear();
    auto settings = settingsOver(store);
    EXPECT_EQ(settings.mappings(), defaultMappings());
    EXPECT_EQ(store.data("mappings"), broken);
    EXPECT_TRUE(store.writes.empty());

    store.refuseSetAside = true;
    settings.setMappings({{"U", {ActionKind::quitApp, {}}}});
    EXPECT_EQ(settings.mappings().size(), 1U);
    EXPECT_EQ(store.data("mappings"), broken);
    store.refuseSetAside = false;
    settings.setMappings({{"D", {ActionKind::quitApp, {}}}});
    settings.setMappings({{"D", {ActionKind::back, {}}}});
    EXPECT_EQ(store.aside, std::vector<FakeDefaultsStore::Value>{Data{broken}});
    EXPECT_EQ(stored(store).at("D").kind, ActionKind::back);
}

TEST(Settings, theLoginItemIsTheSystems) {
    FakeDefaultsStore store;
    FakeLoginItem item;
    RecordingLog systemLog;
    Settings settings(store, item, systemLog);
    std::vector<bool> told;
    const auto subscription = settings.observe([&](Setting) { told.push_back(settings.launchAtLogin()); });
    settings.setLaunchAtLogin(true);
    item.refusal = "not here";
    settings.setLaunchAtLogin(false);
    EXPECT_EQ(told, (std::vector{true, true})) << "a refused change is told too";
    EXPECT_EQ(systemLog.lines(), std::vector<std::string>{"Tarvik: launch-at-login change failed: not here"});
    item.on = false;
    EXPECT_FALSE(settings.launchAtLogin()) << "others change it too";
    EXPECT_TRUE(store.writes.empty());
}

TEST(Settings, snapshotsCarryTheTitles) {
    FakeDefaultsStore store;
    auto settings = settingsOver(store);
    settings.setMappings({{"L", {ActionKind::custom, KeyShortcut{key::t, flags::control}}}});
    settings.setMinStroke(44);
    const KeyNames names(KeyStyle::words, [](std::uint16_t) { return "T"; });
    const auto snapshot = settings.snapshot(linuxVocabulary(), names);
    settings.setMinStroke(55);
    EXPECT_EQ(snapshot->minStroke, 44);
    EXPECT_EQ(snapshot->mappings.at("L").title, "Shortcut Ctrl+T");
}

} // namespace
} // namespace tarvik
