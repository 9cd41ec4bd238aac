// The preferences' file under attack: whatever stands in it, or in its place, has a defined outcome and nothing is
// lost.
#include "platform/linux/common/ini_defaults_store.h"

#include "fakes/fake_login_item.h"
#include "fakes/recording_log.h"
#include "settings/settings.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace tarvik {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string contents(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void put(const fs::path& file, const std::string& text) { std::ofstream(file, std::ios::binary) << text; }

/// Every property in one line.
std::string described(const Settings& settings) {
    std::ostringstream text;
    text << std::boolalpha << settings.enabled() << ' ' << rawValue(settings.triggerButton()) << ' '
         << settings.showTrail() << ' ' << settings.minStroke() << ' ' << rawValue(settings.scrollBinding()) << ' '
         << settings.reverseVertical() << ' ' << settings.reverseHorizontal() << ' ' << settings.mappings().size();
    for (const auto& id : settings.excludedApps())
        text << " <" << id << '>';
    return text.str();
}

const std::string defaults = "true right true 30 tabs false false 16";

class IniStore : public testing::Test {
protected:
    IniStore() {
        std::string name = (fs::temp_directory_path() / "tarvik-store-XXXXXX").string();
        folder = mkdtemp(name.data());
        file = folder / "Tarvik.conf";
    }
    ~IniStore() override { fs::remove_all(folder); }

    std::string loaded() {
        IniDefaultsStore store(file, log);
        return described(settingsOver(store));
    }
    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    fs::path folder;
    fs::path file;
    RecordingLog log;
};

TEST_F(IniStore, eachValueFallsBackByItself) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string> rows[] = {
        {"", defaults},
        {"enabled=false", "false right true 30 tabs false false 16"},
        {" enabled =\t\"No\" \r", "false right true 30 tabs false false 16"},
        {"enabled=0.0", "false right true 30 tabs false false 16"},
        {"showTrail=false\nshowTrail=-1", defaults},
        {"enabled=", defaults},
        {"enabled=off", defaults},
        {"enabled=nan", defaults},
        {"enabled=false, false", defaults},
        {"enabled=\"false", defaults},
        {"enabled=\"false\" x", defaults},
        {"enabled=\"\\q\"", defaults},
        {"enabled=fal\0se"s, defaults},
        {"#enabled=false\n;enabled=false", defaults},
        {"[Other]\nenabled=false\n[ General ]", defaults},
        {"[Other]\nenabled=true\n[ General ]\nenabled=false", "false right true 30 tabs false false 16"},
        {"reverseVertical=1\nreverseHorizontal=yes", "true right true 30 tabs true true 16"},
        {"triggerButton=middle", "true middle true 30 tabs false false 16"},
        {"triggerButton=Middle", defaults},
        {"triggerButton=right, middle", defaults},
        {"triggerButton=1", defaults},
        {"minStroke=+12.5", "true right true 12.5 tabs false false 16"},
        {"minStroke=-1e2", "true right true -100 tabs false false 16"}, // there is no range
        {"minStroke=1e400", defaults},
        {"minStroke=-inf", defaults},
        {"minStroke=NaN", defaults},
        {"minStroke=30px", defaults},
        {"minStroke=++1", defaults},
        {"minStroke=1,5", defaults},
        {"minStroke=true", defaults},
        {"scrollBinding=none", "true right true 30 none false false 16"},
        {"scrollBinding=\xFF\xFE", defaults},
        {"excludedApps=a.b, \"c, d\",\"\\xE2\\x82\\xAC\\\"\"", defaults + " <a.b> <c, d> <\u20AC\">"},
        {"excludedApps=7", defaults + " <7>"},
        {"excludedApps=a\\b", defaults},
        {"excludedApps=\"a", defaults},
        {"excludedApps=" + std::string(1'000'000, 'x'), defaults + " <" + std::string(1'000'000, 'x') + ">"},
        {R"(mappings="{\"L\":{\"kind\":\"fly\"}}")", defaults},
        {R"(mappings={"L":{"kind":"back"}})", defaults},
        {"mappings=\"" + std::string(100'000, '[') + '"', defaults},
        {"mappings=true", defaults},
    };
    for (const auto& [lines, expected] : rows) {
        const auto text = "[General]\n" + lines + "\nstranger=\xFF\n";
        put(file, text);
        EXPECT_EQ(loaded(), expected) << lines.substr(0, 200);
        EXPECT_EQ(contents(file), text) << "written without a change";
    }
    EXPECT_THAT(log.lines(), testing::IsEmpty());
}

TEST_F(IniStore, whateverStandsInItsPlace) {
    using namespace std::string_literals;
    struct Obstacle {
        const char* what;
        std::function<void()> place;
        bool writable;
    };
    const fs::path elsewhere = folder / "elsewhere";
    const auto text = [this](std::string bytes) { return [this, bytes] { put(file, bytes); }; };
    const Obstacle obstacles[] = {
        {"nothing", [] {}, true},
        {"an empty file", text(""), true},
        {"bytes",
         text("\x7F"
              "ELF\2\1\1\0\0\n\0=\xC0\xC1[\n]=\r=\n\"\\"s),
         true},
        {"UTF-16", text("\xFF\xFE[\0G\0]\0\n\0"s), true},
        {"no line end", text("[General]\nstranger=1"), true},
        {"another section", text("[Other]\nenabled=true\n"), true},
        {"a dangling link", [&] { fs::create_symlink("elsewhere", file); }, true},
        {"a link that leads to no folder", [&] { fs::create_symlink("none/elsewhere", file); }, false},
        {"a circle of links", [&] { fs::create_symlink(file, file); }, false},
        {"a folder", [&] { fs::create_directory(file); }, false},
        {"a pipe", [&] { mkfifo(file.c_str(), 0600); }, false},
        {"too much",
         [&] {
             put(file, "");
             fs::resize_file(file, 1ULL << 30);
         },
         false},
    };
    for (const auto& [what, place, writable] : obstacles) {
        SCOPED_TRACE(what);
        place();
        const auto type = fs::symlink_status(file).type();
        const auto before = writable ? contents(file) : "";
        log.clear();
        {
            IniDefaultsStore store(file, log);
            auto settings = settingsOver(store);
            EXPECT_EQ(described(settings), defaults);
            std::vector<std::string> problems;
            const auto subscription = settings.observe([&](Setting setting) {
                if (setting == Setting::storage)
                    problems.push_back(settings.storageProblem());
            });
            settings.setEnabled(false);
            EXPECT_FALSE(settings.enabled());
            EXPECT_EQ(store.boolean("enabled"), false);
            if (writable) {
                EXPECT_THAT(log.lines(), testing::IsEmpty());
                EXPECT_THAT(contents(file), testing::StartsWith(before));
            } else {
                ASSERT_FALSE(log.lines().empty());
                EXPECT_THAT(log.lines().back(), testing::StartsWith("preferences cannot be written: "));
                EXPECT_EQ(fs::symlink_status(file).type(), type);
                // Nothing is lost once the way is free.
                fs::remove(file);
                settings.setShowTrail(false);
                settings.setShowTrail(true);
                EXPECT_THAT(problems, testing::ElementsAre(HasSubstr("Tarvik.conf: "), ""));
            }
        }
        if (writable && type != fs::file_type::not_found)
            EXPECT_EQ(fs::symlink_status(file).type(), type) << "a link stays a link";
        EXPECT_EQ(loaded(), "false right true 30 tabs false false 16");
        fs::remove(file);
        fs::remove(elsewhere);
        EXPECT_EQ(filesInFolder(), 0U) << "something was left behind";
    }
}

/// As somebody without rights, for the length of a block.
class Nobody {
public:
    Nobody() { EXPECT_TRUE(!root_ || seteuid(65534) == 0); }
    ~Nobody() { EXPECT_TRUE(!root_ || seteuid(0) == 0); }

private:
    const bool root_ = geteuid() == 0;
};

TEST_F(IniStore, withoutTheRightToWriteOrRead) {
    const std::string text = "enabled=false\nmappings=what?\n";
    put(file, text);
    fs::permissions(folder, fs::perms(0555));
    fs::permissions(file, fs::perms(0644));
    {
        const Nobody nobody;
        IniDefaultsStore store(file, log);
        auto settings = settingsOver(store);
        EXPECT_FALSE(settings.enabled());
        settings.setEnabled(true);
        settings.setMappings({});
        EXPECT_TRUE(settings.enabled());
        EXPECT_TRUE(settings.mappings().empty());
    }
    EXPECT_THAT(log.lines(),
                testing::ElementsAre(HasSubstr("cannot be written"), HasSubstr("stays since it cannot be copied")));
    log.clear();
    fs::permissions(folder, fs::perms(0777));
    fs::permissions(file, fs::perms::none);
    {
        const Nobody nobody;
        IniDefaultsStore store(file, log);
        auto settings = settingsOver(store);
        EXPECT_EQ(described(settings), defaults);
        settings.setShowTrail(false);
    }
    EXPECT_THAT(log.lines(), testing::ElementsAre(HasSubstr("cannot be read"), HasSubstr("cannot be written")));
    fs::permissions(file, fs::perms(0600));
    EXPECT_EQ(contents(file), text);
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(IniStore, aLinkedFileIsEditedWhereItIs) {
    const auto repository = folder / "dotfiles";
    fs::create_directory(repository);
    put(repository / "conf", "# mine\n[Other]\nenabled=1\n\n[General] \nstranger=a b; c\n; why not\nenabled = "
                             "true\nenabled=true\n\n[Last]\n\xFF\n");
    fs::permissions(repository / "conf", fs::perms(0640));
    fs::create_symlink("dotfiles/again", file);
    fs::create_symlink("conf", repository / "again");
    IniDefaultsStore store(file, log);
    auto settings = settingsOver(store);
    settings.setEnabled(false);
    settings.setMinStroke(0.1);
    settings.setExcludedApps({});
    settings.setExcludedApps({"a", "", " b\x01\n\"\\,", "\xC3\xA9\xFF"});
    EXPECT_EQ(contents(repository / "conf"),
              "# mine\n[Other]\nenabled=1\n\n[General] \nstranger=a b; c\n; why not\nenabled = "
              "true\nenabled=false\nminStroke=0.1\n"
              "excludedApps=a, \"\", \" b\\x01\\x0A\\\"\\\\,\", \"\xC3\xA9\xFF\"\n\n[Last]\n\xFF\n");
    EXPECT_EQ(fs::status(repository / "conf").permissions(), fs::perms(0640));
    EXPECT_TRUE(fs::is_symlink(file) && fs::is_symlink(repository / "again"));
    EXPECT_EQ(store.textList("excludedApps"), settings.excludedApps());
    EXPECT_THAT(log.lines(), testing::IsEmpty());
}

TEST_F(IniStore, whatOthersChangeMeanwhileIsKept) {
    put(file, "enabled=true\nshowTrail=true\nstranger=1\n");
    IniDefaultsStore store(file, log);
    auto settings = settingsOver(store);
    put(file, "showTrail=false\nstranger=2\nmappings=\"{}\"\n"); // as another program
    settings.setMinStroke(40);
    EXPECT_EQ(contents(file), "showTrail=false\nstranger=2\nmappings=\"{}\"\n[General]\nminStroke=40\n");
    EXPECT_TRUE(settings.showTrail()) << "the file is read at the start only";

    // Two that write at the same time, each a key of its own.
    const auto write = [this](const std::string& key) {
        IniDefaultsStore mine(file, log);
        for (int i = 1; i <= 100; ++i) {
            mine.setNumber(key, i);
            EXPECT_EQ(mine.number(key), i);
        }
    };
    std::thread other([&] { write("theirs"); });
    write("ours");
    other.join();
    const IniDefaultsStore now(file, log);
    EXPECT_EQ(now.number("ours"), 100);
    EXPECT_EQ(now.number("theirs"), 100);
    EXPECT_EQ(now.number("minStroke"), 40);
    EXPECT_EQ(now.number("stranger"), 2);
    EXPECT_EQ(filesInFolder(), 1U);
    EXPECT_THAT(log.lines(), testing::IsEmpty());
}

TEST_F(IniStore, aTableThatCannotBeReadIsKeptInACopy) {
    const auto copy = [this](const char* number) { return fs::path(file.string() + ".unreadable" + number); };
    const auto change = [this](auto how) {
        IniDefaultsStore store(file, log);
        auto settings = settingsOver(store);
        how(settings);
    };
    const auto changeTable = [](Settings& settings) { settings.setMappings({{"L", {ActionKind::back, {}}}}); };
    const std::string first =
        "# work of an evening\nmappings=\"{\\\"DRU\\\":{\\\"kind\\\":\\\"fly\\\"}}\"\nstranger=1\n";
    put(file, first);
    change([](Settings& settings) { settings.setShowTrail(false); });
    EXPECT_FALSE(fs::exists(copy("")));
    put(file, first);
    change(changeTable);
    EXPECT_EQ(contents(copy("")), first);
    EXPECT_THAT(log.lines(),
                testing::ElementsAre("preferences: 'mappings' makes no sense; the file as it was is kept as " +
                                     copy("").string()));
    EXPECT_EQ(contents(file),
              "# work of an evening\nmappings=\"{\\\"L\\\":{\\\"kind\\\":\\\"back\\\"}}\"\nstranger=1\n");
    // What can be read needs no copy, the same no other, and one that is there is not touched.
    change(changeTable);
    put(file, first);
    change(changeTable);
    EXPECT_EQ(filesInFolder(), 2U);
    put(file, "mappings=a, list\n");
    change([&](Settings& settings) {
        changeTable(settings);
        settings.setMappings({});
    });
    EXPECT_EQ(contents(copy("")), first);
    EXPECT_EQ(contents(copy(".2")), "mappings=a, list\n");
    EXPECT_EQ(filesInFolder(), 3U);
}

} // namespace
} // namespace tarvik
