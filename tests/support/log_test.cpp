#include "support/log.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>
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

TEST_F(LogTest, writesMessagesAsTheyAre) {
    {
        Log log(file());
        log.write("");
        log.write("two\nlines");
    }
    const auto text = read(file());
    EXPECT_EQ(text.substr(23), " \n" + text.substr(25, 23) + " two\nlines\n");
}

TEST_F(LogTest, survivesAFolderThatIsNotThere) {
    fs::remove_all(folder_);
    {
        Log log(file());
        log.write("lost");
        log.flush();
        fs::create_directories(folder_);
        log.write("kept");
    }
    EXPECT_NE(read(file()).find("kept"), std::string::npos);
    EXPECT_EQ(read(file()).find("lost"), std::string::npos);
}

} // namespace
} // namespace tarvik
