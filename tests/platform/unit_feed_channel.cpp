// When updates are looked for, and what is made of the answer; the program that looks is a script of the test's own.
#include "platform/linux/common/feed_update_channel.h"

#include "fakes/fake_defaults_store.h"
#include "fakes/recording_log.h"
#include "platform/support/event_loop.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace tarvik {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::system_clock;

constexpr auto lastCheck = "lastUpdateCheck";

class FeedChannel : public testing::Test {
protected:
    FeedChannel() {
        std::string name = (fs::temp_directory_path() / "tarvik-feed-XXXXXX").string();
        folder = mkdtemp(name.data());
        answer("newest\\n21\\n1.3\\nhttps://e.org\\n");
    }
    ~FeedChannel() override { fs::remove_all(folder); }

    /// The script notes that it ran.
    void answer(const std::string& text, int exitCode = 0) {
        const auto script = folder / "feed";
        std::ofstream(script) << "#!/bin/sh\necho \"$1\" >>'" << (folder / "ran").string() << "'\nprintf '" << text
                              << "'\nexit " << exitCode << '\n';
        fs::permissions(script, fs::perms::owner_all);
    }
    int checks() const {
        std::ifstream file(folder / "ran");
        return static_cast<int>(std::count(std::istreambuf_iterator<char>(file), {}, '\n'));
    }
    std::unique_ptr<FeedUpdateChannel> channel(FeedUpdateChannel::Schedule schedule = {}) {
        return std::make_unique<FeedUpdateChannel>(
            FeedSource{QString::fromStdString((folder / "feed").string()), "https://feed", {}, "20", "1.2"}, store, log,
            [this](const QString& title, const QString&, const QString& page, bool asked) {
                told.push_back((asked ? "asked: " : "") + title.toStdString() + ' ' + page.toStdString());
            },
            [this] { return now; }, schedule);
    }
    void ask(FeedUpdateChannel& channel) {
        const auto before = told.size();
        channel.checkForUpdates();
        EXPECT_EQ(channel.outcome(), "Checking for updates…");
        EXPECT_TRUE(eventuallyInLoop([&] { return told.size() > before; }));
    }
    void stored(system_clock::time_point time) {
        store.setNumber(lastCheck, static_cast<double>(system_clock::to_time_t(time)));
    }

    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    fs::path folder;
    FakeDefaultsStore store;
    RecordingLog log;
    std::vector<std::string> told;
    system_clock::time_point now = system_clock::from_time_t(1'700'000'000);
};

constexpr FeedUpdateChannel::Schedule soon = {milliseconds(1), milliseconds(20), hours(24)};

TEST_F(FeedChannel, anAutomaticCheckTellsOfANewVersionOnce) {
    const auto updates = channel(soon);
    EXPECT_TRUE(updates->automaticallyChecksForUpdates());
    EXPECT_FALSE(updates->lastUpdateCheckDate());
    ASSERT_TRUE(eventuallyInLoop([&] { return updates->outcome() == "Tarvik 1.3 is available."; }));
    EXPECT_EQ(updates->lastUpdateCheckDate(), now);
    now += hours(25);
    ASSERT_TRUE(eventuallyInLoop([&] { return updates->lastUpdateCheckDate() == now; }));
    EXPECT_EQ(checks(), 2);
    EXPECT_EQ(told, std::vector<std::string>{"Tarvik 1.3 is available. https://e.org"});
    ask(*updates);
    EXPECT_EQ(told.back(), "asked: Tarvik 1.3 is available. https://e.org");
}

TEST_F(FeedChannel, withinADayOrSwitchedOffNobodyIsAsked) {
    const auto quiet = [&](const char* why) {
        const auto updates = channel(soon);
        // Several rounds of its timer; a check that it began would be seen when the next program has ended.
        for (int i = 0; i < 5; ++i) {
            QEventLoop loop;
            QTimer::singleShot(20, &loop, &QEventLoop::quit);
            loop.exec();
        }
        EXPECT_EQ(checks(), 0) << why;
    };
    stored(now - hours(23));
    quiet("the last check was today");
    stored(now - hours(25));
    store.setBoolean("automaticUpdateChecks", false);
    quiet("switched off");

    const auto updates = channel(soon);
    updates->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(eventuallyInLoop([&] { return checks() == 1; }));
}

TEST_F(FeedChannel, aDateThatCannotBeIsNoDate) {
    for (const auto& value : {FakeDefaultsStore::Value(-1.0), FakeDefaultsStore::Value(1e300),
                              FakeDefaultsStore::Value(std::string("yesterday"))}) {
        store.values.insert_or_assign(lastCheck, value);
        EXPECT_FALSE(channel()->lastUpdateCheckDate());
    }
    stored(now + hours(1000));
    const auto updates = channel(soon);
    EXPECT_TRUE(eventuallyInLoop([&] { return updates->lastUpdateCheckDate() == now; })) << "the clock was set back";
}

TEST_F(FeedChannel, aFailureIsTriedAgain) {
    answer("failed\\nThe update server cannot be reached.\\n");
    const auto updates = channel(soon);
    ASSERT_TRUE(eventuallyInLoop([&] { return checks() >= 2; }));
    EXPECT_FALSE(updates->lastUpdateCheckDate());
    EXPECT_TRUE(told.empty());
    ask(*updates);
    EXPECT_EQ(told.back(), "asked: Tarvik could not look for updates ");
    EXPECT_EQ(updates->outcome(), "The update server cannot be reached.");
}

TEST_F(FeedChannel, aProgramThatFailsIsAFailure) {
    const auto updates = channel();
    const auto refused = [&] {
        ask(*updates);
        EXPECT_EQ(updates->outcome(), "Updates cannot be looked for.");
    };
    answer("newest\\n21\\n1.3\\nhttps://e.org\\n", 1);
    refused();
    for (const auto* text : {"newest\\n21\\n", "newest\\n\\n1.3\\n\\n", "failed\\n\\n"}) {
        answer(text);
        refused();
    }
    answer("newest\\n21\\n1.3\\n\\n%100000d"); // more than anybody reads
    refused();
    answer("");
    refused();
    fs::remove(folder / "feed");
    refused();
}

TEST_F(FeedChannel, whoIsTold) {
    const auto updates = channel();
    int changes = 0;
    updates->onChange([&] { ++changes; });
    answer("newest\\n20\\n1.2\\n\\n");
    ask(*updates);
    EXPECT_EQ(updates->outcome(), "Tarvik 1.2 is the newest version.");
    EXPECT_EQ(changes, 2);
    answer("newest\\n21\\n1.3\\nfile:///etc/passwd\\n");
    ask(*updates);
    EXPECT_EQ(told.back(), "asked: Tarvik 1.3 is available. ") << "only a page is opened";
    answer("newest\\n3\\n1.1\\n\\n");
    ask(*updates);
    EXPECT_EQ(updates->outcome(), "Tarvik 1.2 is newer than the newest published version, 1.1.");
}

} // namespace
} // namespace tarvik
