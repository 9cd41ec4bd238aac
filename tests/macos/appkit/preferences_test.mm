// The user defaults and the updates that keep their values there.
#import "platform/macos/sparkle_update_channel.h"
#import "platform/macos/user_defaults_store.h"

#include "fakes/fake_login_item.h"
#include "fakes/recording_log.h"
#include "macos/appkit/appkit_test.h"
#include "macos/appkit/recorder/sparkle.h"
#include "settings/settings.h"

namespace tarvik {
namespace {

using namespace recorder;

class PreferencesTest : public AppKitTest {
protected:
    static void keep(const char* key, id object) { desk().defaults[key] = Strong(object); }
    static id kept(const char* key) { return desk().defaults[key].get(); }

    RecordingLog log;
    UserDefaultsStore store{log};
};

TEST_F(PreferencesTest, ValuesHaveTheirOwnTypes) {
    store.setBoolean("enabled", true);
    store.setNumber("minStroke", 12.5);
    store.setText("triggerButton", "middle");
    store.setTextList("excludedApps", {"a.b", "ä"});
    store.setData("mappings", std::string("\x00@{\xff", 4));
    EXPECT_TRUE([kept("enabled") isKindOfClass:[NSNumber class]]);
    EXPECT_TRUE([kept("minStroke") isKindOfClass:[NSNumber class]]);
    EXPECT_TRUE([kept("triggerButton") isKindOfClass:[NSString class]]);
    EXPECT_TRUE([kept("excludedApps") isKindOfClass:[NSArray class]]);
    EXPECT_TRUE([kept("mappings") isKindOfClass:[NSData class]]);
    EXPECT_EQ(store.boolean("enabled"), true);
    EXPECT_EQ(store.number("minStroke"), 12.5);
    EXPECT_EQ(store.text("triggerButton"), "middle");
    EXPECT_EQ(store.textList("excludedApps"), (std::vector<std::string>{"a.b", "ä"}));
    EXPECT_EQ(store.data("mappings"), std::string("\x00@{\xff", 4));
    store.setTextList("excludedApps", {});
    EXPECT_EQ(store.textList("excludedApps"), std::vector<std::string>());
}

TEST_F(PreferencesTest, OtherTypesAreConvertedWhereThatMakesSense) {
    EXPECT_EQ(store.boolean("missing"), std::nullopt);
    EXPECT_EQ(store.number("missing"), std::nullopt);
    EXPECT_EQ(store.text("missing"), std::nullopt);
    EXPECT_EQ(store.textList("missing"), std::nullopt);
    EXPECT_EQ(store.data("missing"), std::nullopt);

    keep("text", makeString("45.5"));
    EXPECT_EQ(store.number("text"), 45.5);
    EXPECT_EQ(store.boolean("text"), true);
    keep("text", makeString("NO"));
    EXPECT_EQ(store.boolean("text"), false);
    for (const auto* word : {"", "45 points", "many", "nan", "inf"}) {
        keep("text", makeString(word));
        EXPECT_EQ(store.number("text"), std::nullopt) << word;
    }
    keep("number", makeNumber(2));
    EXPECT_EQ(store.boolean("number"), true);
    keep("list", makeArray({makeString("a"), makeNumber(1)}));
    EXPECT_EQ(store.textList("list"), std::nullopt);
    EXPECT_EQ(store.boolean("list"), std::nullopt);
    EXPECT_EQ(store.number("list"), std::nullopt);
    EXPECT_EQ(store.text("list"), std::nullopt);
    EXPECT_EQ(store.data("list"), std::nullopt);
}

TEST_F(PreferencesTest, SettingsLoadMigrateAndWriteThroughTheStore) {
    const std::string stored = R"({"U":{"kind":"quitApp"}})";
    store.setData("mappings", stored);
    FakeLoginItem loginItem;
    RecordingLog systemLog;
    Settings settings(store, loginItem, systemLog);
    EXPECT_EQ(settings.mappings().size(), 3u);
    EXPECT_EQ(store.boolean("addedExitFullScreen"), true);
    EXPECT_EQ(store.boolean("addedEnterFullScreen"), true);
    EXPECT_NE(store.data("mappings"), stored);
    settings.setMinStroke(12.5);
    EXPECT_EQ([kept("minStroke") doubleValue], 12.5);
}

TEST_F(PreferencesTest, WhatIsSetAsideIsKeptUnderANameOfItsOwn) {
    EXPECT_TRUE(store.setAside("mappings")) << "there is nothing to keep";
    store.setData("mappings", "first");
    EXPECT_TRUE(store.setAside("mappings"));
    EXPECT_TRUE(store.setAside("mappings")) << "it is kept already";
    EXPECT_EQ(store.data("mappings.unreadable"), "first");
    store.setText("mappings", "second");
    EXPECT_TRUE(store.setAside("mappings"));
    EXPECT_EQ(store.data("mappings.unreadable"), "first");
    EXPECT_EQ(store.text("mappings.unreadable.2"), "second");
    EXPECT_EQ(log.lines(), (std::vector<std::string>{
                               "preferences: 'mappings' makes no sense; it is kept as 'mappings.unreadable'",
                               "preferences: 'mappings' makes no sense; it is kept as 'mappings.unreadable.2'"}));
    for (int i = 3; i <= 100; ++i)
        store.setText("mappings.unreadable." + std::to_string(i), "taken");
    store.setText("mappings", "third");
    EXPECT_FALSE(store.setAside("mappings"));
    EXPECT_EQ(log.lines().size(), 3u);
}

TEST_F(PreferencesTest, UpdatesAreAbsentWithoutAFeedAnIdentifierOrTheFramework) {
    desk().frameworks = {"/Applications/Tarvik.app/Contents/Frameworks/Sparkle.framework"};
    EXPECT_EQ(SparkleUpdateChannel::make(log), nullptr);
    EXPECT_FALSE(desk().sparkleLoaded) << "a build without a feed does not even load it";
    desk().info = {{"SUFeedURL", "https://updates.invalid/appcast.xml"}};
    desk().bundleIdentifier = std::nullopt;
    EXPECT_EQ(SparkleUpdateChannel::make(log), nullptr);
    EXPECT_TRUE(log.lines().empty());
    desk().bundleIdentifier = "org.tarvik.Tarvik";
    desk().frameworks.clear();
    EXPECT_EQ(SparkleUpdateChannel::make(log), nullptr);
    EXPECT_EQ(log.lines().size(), 1u);
}

TEST_F(PreferencesTest, UpdatesStartByThemselvesAndRemindGently) {
    desk().frameworks = {"/Applications/Tarvik.app/Contents/Frameworks/Sparkle.framework"};
    desk().info = {{"SUFeedURL", "https://updates.invalid/appcast.xml"}};
    const auto channel = SparkleUpdateChannel::make(log);
    ASSERT_NE(channel, nullptr);
    auto* controller = only<SPUStandardUpdaterController>();
    EXPECT_TRUE(value<BOOL>(controller, "started"));
    EXPECT_EQ(value<id>(controller, "updaterDelegate"), nil);
    id reminders = value<id>(controller, "userDriverDelegate");
    EXPECT_TRUE([(id<SPUStandardUserDriverDelegate>)reminders supportsGentleScheduledUpdateReminders]);

    channel->checkForUpdates();
    EXPECT_EQ(value<int>(controller, "checks"), 1);
    EXPECT_EQ(desk().activations, 0) << "that is the caller's business";
    channel->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE([[controller updater] automaticallyChecksForUpdates]);
    EXPECT_TRUE(channel->automaticallyChecksForUpdates());
    channel->setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(channel->automaticallyChecksForUpdates());
    EXPECT_EQ(channel->outcome(), "");

    EXPECT_EQ(channel->lastUpdateCheckDate(), std::nullopt);
    [[controller updater] setLastUpdateCheckDate:makeDate(1'700'000'000.5)];
    EXPECT_EQ(channel->lastUpdateCheckDate(),
              std::chrono::system_clock::time_point(std::chrono::milliseconds(1'700'000'000'500)));
    int told = 0;
    channel->onChange([&] { ++told; });
    store.setNumber("SULastCheckTime", 1);
    EXPECT_EQ(told, 1);
}

} // namespace
} // namespace tarvik
