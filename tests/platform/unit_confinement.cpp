// What a process that was confined can still do, each time in a process that ends.
#include "platform/linux/feed/confinement.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace tarvik {
namespace {

namespace fs = std::filesystem;

bool opens(const fs::path& file, int flags) {
    const int number = open(file.c_str(), flags | O_CLOEXEC, 0600);
    if (number >= 0)
        close(number);
    return number >= 0;
}

class Confinement : public testing::Test {
protected:
    Confinement() {
        std::string name = (fs::temp_directory_path() / "tarvik-confined-XXXXXX").string();
        folder = mkdtemp(name.data());
        for (const auto* file : {"certificates", "secret"})
            std::ofstream(folder / file) << file;
    }
    ~Confinement() override { fs::remove_all(folder); }

    /// Ends the process: 0 when everything holds, else the place in the list.
    [[noreturn]] void report(std::initializer_list<bool> all) {
        int place = 0;
        for (const bool holds : all) {
            ++place;
            if (!holds)
                _exit(place);
        }
        _exit(0);
    }

    fs::path folder;
};

TEST_F(Confinement, filesAndPrograms) {
    if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) < 1)
        GTEST_SKIP() << "this kernel has no Landlock";
    const auto look = [this] {
        confine({folder / "certificates"});
        report({opens(folder / "certificates", O_RDONLY), opens("/etc/passwd", O_RDONLY),
                opens("/dev/urandom", O_RDONLY), !opens(folder / "secret", O_RDONLY),
                !opens(folder / "certificates", O_WRONLY), !opens(folder / "new", O_WRONLY | O_CREAT),
                unlink((folder / "secret").c_str()) != 0, execl("/bin/true", "true", nullptr) != 0});
    };
    EXPECT_EXIT(look(), testing::ExitedWithCode(0), "");
    EXPECT_TRUE(fs::exists(folder / "secret"));
}

TEST_F(Confinement, rightsAndLimits) {
    const auto look = [this] {
        const int output = open((folder / "output").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        confine({});
        rlimit core = {1, 1};
        getrlimit(RLIMIT_CORE, &core);
        report({prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 1, core.rlim_max == 0, write(output, "text", 4) == 4,
                socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0) >= 0});
    };
    EXPECT_EXIT(look(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace tarvik
