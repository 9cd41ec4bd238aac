// A program that is replaced while it runs, by all that may be put in its place.
#include "platform/linux/common/program_watch.h"

#include "fakes/recording_log.h"
#include "platform/support/event_loop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace tarvik {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto replaced = "the program was replaced";
constexpr auto broken = "the program was replaced by one that cannot be started; going on without it";
constexpr auto removed = "the program was removed; going on without it";

fs::path newFolder() {
    std::string name = (fs::temp_directory_path() / "tarvik-program-XXXXXX").string();
    return mkdtemp(name.data());
}

class ProgramWatchTest : public testing::Test {
protected:
    ProgramWatchTest() {
        fs::copy_file("/bin/true", program);
        fs::create_hard_link(program, running);
        watch.emplace(
            ProgramWatch::Places{program, folder / "lib", running}, log, [this] { ++calls; },
            ProgramWatch::Pace{milliseconds(20), milliseconds(1500)});
    }
    ~ProgramWatchTest() override {
        watch.reset();
        fs::remove_all(folder);
    }

    /// As a package manager does it: at any moment there is the old file or the new one.
    void replaceBy(const fs::path& file, std::uintmax_t bytes = UINTMAX_MAX) const {
        const auto coming = folder / "coming";
        fs::copy_file(file, coming);
        fs::resize_file(coming, std::min(bytes, fs::file_size(coming)));
        fs::rename(coming, program);
    }
    bool logged(const std::string& line) {
        return eventuallyInLoop([&] { return log.contains(line); });
    }
    /// A dozen times as long as until a look.
    static void wait() {
        const auto end = std::chrono::steady_clock::now() + milliseconds(300);
        EXPECT_TRUE(eventuallyInLoop([end] { return std::chrono::steady_clock::now() > end; }));
    }

    const fs::path folder = newFolder();
    const fs::path program = folder / "program";
    const fs::path running = folder / "running";
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    RecordingLog log;
    int calls = 0;
    std::optional<ProgramWatch> watch;
};

TEST_F(ProgramWatchTest, aNewProgramIsToldOfOnceAndOthersNever) {
    std::ofstream(folder / "another file") << "nothing";
    fs::create_directory(folder / "lib");
    wait();
    EXPECT_EQ(calls, 0);
    EXPECT_FALSE(watch->successorReady());

    replaceBy("/bin/echo");
    EXPECT_TRUE(eventuallyInLoop([&] { return calls == 1; }));
    EXPECT_TRUE(watch->successorReady());
    wait();
    replaceBy("/bin/true");
    EXPECT_FALSE(watch->successorReady());
    EXPECT_TRUE(eventuallyInLoop([&] { return calls == 2; }));
    wait();
    EXPECT_EQ(calls, 2);
    EXPECT_THAT(log.lines(), ElementsAre(replaced));
}

TEST_F(ProgramWatchTest, whatCannotBeStartedIsLeftAlone) {
    const auto text = folder / "text";
    std::ofstream(text) << "echo no program\n";
    fs::permissions(text, fs::perms::owner_all);
    replaceBy(text);
    EXPECT_TRUE(logged(broken));
    wait();
    EXPECT_EQ(calls, 0);
    replaceBy("/bin/true");
    EXPECT_TRUE(logged(replaced));
    EXPECT_EQ(calls, 1);
}

TEST_F(ProgramWatchTest, whatWasMissingMayComeWithoutAChangeOfTheFolder) {
    const auto part = fs::file_size("/bin/true") / 3;
    replaceBy("/bin/true", part);
    EXPECT_TRUE(logged(broken));
    EXPECT_EQ(calls, 0);
    std::ifstream whole("/bin/true", std::ios::binary);
    whole.seekg(static_cast<std::streamoff>(part));
    std::ofstream(program, std::ios::binary | std::ios::app) << whole.rdbuf();
    EXPECT_TRUE(logged(replaced));
    EXPECT_EQ(calls, 1);
}

TEST_F(ProgramWatchTest, removedItGoesOnAndAnotherOneMayCome) {
    fs::remove(program);
    EXPECT_TRUE(logged(removed));
    EXPECT_EQ(calls, 0);
    replaceBy("/bin/true");
    EXPECT_TRUE(logged(replaced));
    EXPECT_EQ(calls, 1);
}

TEST_F(ProgramWatchTest, itIsTheFileThatRunsUnderAnotherNameToo) {
    fs::rename(program, folder / "for a moment");
    fs::rename(folder / "for a moment", program);
    wait();
    EXPECT_EQ(calls, 0);
    EXPECT_THAT(log.lines(), IsEmpty());
}

} // namespace
} // namespace tarvik
