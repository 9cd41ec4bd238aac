#include "support/log.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <vector>

namespace tarvik {
namespace {

namespace fs = std::filesystem;

class LogTest : public testing::Test {
protected:
    LogTest() {
        std::string name = (fs::temp_directory_path() / "tarvik-log-XXXXXX").string();
        folder_ = mkdtemp(name.data());
    }
    ~LogTest() override { fs::remove_all(folder_); }

    fs::path file() const { return folder_ / "Tarvik.log"; }
    fs::path oldFile() const { return folder_ / "Tarvik.old.log"; }
    static std::string read(const fs::path& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    static void fill(const fs::path& path, std::size_t size) { std::ofstream(path) << std::string(size, 'x'); }

    fs::path folder_;
};

TEST_F(LogTest, stampsEachLineWithTheLocalTimeOfTheCall) {
    setenv("TZ", "UTC-2", 1);
    tzset();
    const auto time = std::chrono::system_clock::from_time_t(1738328647) + std::chrono::milliseconds(412);
    {
        Log(file(), [time] { return time; }).write("launched");
    }
    EXPECT_EQ(read(file()), "2025-01-31 15:04:07.412 launched\n");
    unsetenv("TZ");
    tzset();
}

TEST_F(LogTest, keepsTheOrderOfTheCallsOfEveryThread) {
    constexpr int threads = 4;
    constexpr int lines = 250;
    {
        Log log(file());
        std::vector<std::thread> writers;
        for (int t = 0; t < threads; ++t)
            writers.emplace_back([&log, t] {
                for (int i = 0; i < lines; ++i)
                    log.write(std::to_string(t) + " " + std::to_string(i));
            });
        for (auto& writer : writers)
            writer.join();
        log.flush();
        EXPECT_EQ(std::count(std::istreambuf_iterator(std::ifstream(file()).rdbuf()), {}, '\n'), threads * lines);
    }
    std::ifstream in(file());
    std::vector<int> next(threads, 0);
    std::string date;
    std::string clock;
    std::string lastStamp;
    int thread = 0;
    int number = 0;
    while (in >> date >> clock >> thread >> number) {
        ASSERT_EQ(number, next[static_cast<std::size_t>(thread)]++);
        ASSERT_LE(lastStamp, date + clock);
        lastStamp = date + clock;
    }
    EXPECT_EQ(next, std::vector<int>(threads, lines));
}

TEST_F(LogTest, rotatesAboveAMillionBytesAndKeepsOneOldFile) {
    fill(file(), 1'000'000);
    { Log(file()).write("a"); }
    EXPECT_FALSE(fs::exists(oldFile())) << "exactly a million is not above it";
    fill(oldFile(), 3);
    { Log(file()).write("b"); }
    EXPECT_GT(fs::file_size(oldFile()), 1'000'000U);
    EXPECT_TRUE(std::regex_match(read(file()), std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} b\n)")));
}

TEST_F(LogTest, isWrittenAgainAsSoonAsItCanBe) {
    const struct {
        const char* what;
        std::function<void(const fs::path& file)> put;
    } obstacles[] = {
        {"no space", [](const fs::path& file) { fs::create_symlink("/dev/full", file); }},
        {"a folder", [](const fs::path& file) { fs::create_directory(file); }},
        {"a pipe", [](const fs::path& file) { mkfifo(file.c_str(), 0600); }},
        {"a circle of links", [](const fs::path& file) { fs::create_symlink(file, file); }},
        {"a file for a folder",
         [](const fs::path& file) {
             fs::remove_all(file.parent_path());
             std::ofstream(file.parent_path()) << "mine";
         }},
    };
    for (const auto& [what, put] : obstacles) {
        SCOPED_TRACE(what);
        put(file());
        {
            Log log(file());
            testing::internal::CaptureStderr();
            log.write("first");
            log.write("second");
            log.flush();
            EXPECT_TRUE(std::regex_match(testing::internal::GetCapturedStderr(),
                                         std::regex("Tarvik: .*/Tarvik.log cannot be written; its lines come here "
                                                    "instead\n\\S+ \\S+ first\n\\S+ \\S+ second\n")));
            if (fs::is_directory(folder_))
                fs::remove_all(file());
            else
                fs::remove(folder_); // it is made anew
            log.write("third");
            log.write("fourth");
        }
        EXPECT_TRUE(std::regex_match(read(file()),
                                     std::regex(R"((\S+ \S+ )2 lines are missing here\n\1third\n\S+ \S+ fourth\n)")))
            << read(file());
        EXPECT_EQ(fs::status(file()).permissions(), fs::perms(0600));
        EXPECT_EQ(fs::status(folder_).permissions(), fs::perms(0700));
        fs::remove(file());
    }
}

TEST_F(LogTest, aMessageIsOneLineWhoeverWroteIt) {
    { Log(file()).write("window \x1b[2J\r\n2025-01-31 14:03:07.412 ended" + std::string(1'000'000, 'x')); }
    const auto text = read(file());
    EXPECT_NE(text.find(" window  [2J  2025-01-31 14:03:07.412 endedxx"), std::string::npos);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    EXPECT_LT(text.size(), 2100U);
}

TEST_F(LogTest, noHalfLineStaysWhereTheDiskIsFull) {
    fill(file(), 100);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    {
        Log log(file());
        const rlimit full{110, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        testing::internal::CaptureStderr();
        log.write("too long for ten bytes");
        log.flush();
        testing::internal::GetCapturedStderr();
        setrlimit(RLIMIT_FSIZE, &before);
    }
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(read(file()), std::string(100, 'x'));
}

TEST_F(LogTest, anOldFileThatCannotBeReplacedFillsNoDisk) {
    fill(file(), 1'000'001);
    fs::create_directories(oldFile() / "in the way");
    { Log(file()).write("a"); }
    EXPECT_LT(fs::file_size(file()), 100U);
}

} // namespace
} // namespace tarvik
