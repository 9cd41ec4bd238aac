#include "platform/linux/feed/confinement.h"

#include "platform/linux/process/privileges.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>

namespace tarvik {
namespace {

/// Libraries, certificate authorities, the resolver's configuration wherever it lies, random numbers.
constexpr const char* system[] = {"/usr",
                                  "/etc",
                                  "/lib",
                                  "/lib64",
                                  "/dev",
                                  "/proc/self",
                                  "/run/systemd/resolve",
                                  "/run/NetworkManager",
                                  "/run/resolvconf",
                                  "/var/lib/ca-certificates"};

/// Every right over files that the first version of Landlock knows.
constexpr std::uint64_t everything = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1) - 1;

void allowReading(int rules, const std::filesystem::path& path) {
    const int place = open(path.c_str(), O_PATH | O_CLOEXEC);
    struct stat about = {};
    if (place < 0 || fstat(place, &about) != 0)
        return;
    landlock_path_beneath_attr rule = {};
    rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE;
    if (S_ISDIR(about.st_mode))
        rule.allowed_access |= LANDLOCK_ACCESS_FS_READ_DIR;
    rule.parent_fd = place;
    syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    close(place);
}

void confineFiles(const std::vector<std::filesystem::path>& readable) {
    landlock_ruleset_attr about = {};
    about.handled_access_fs = everything;
    const auto rules = static_cast<int>(syscall(SYS_landlock_create_ruleset, &about, sizeof about, 0));
    if (rules < 0)
        return;
    for (const auto* path : system)
        allowReading(rules, path);
    for (const auto& path : readable)
        allowReading(rules, path);
    syscall(SYS_landlock_restrict_self, rules, 0);
    close(rules);
}

void limit(__rlimit_resource_t resource, rlim_t most) {
    const rlimit both = {most, most};
    setrlimit(resource, &both);
}

rlim_t addressSpace() {
    std::uintmax_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

void confine(const std::vector<std::filesystem::path>& readable) {
    giveUpNewPrivileges();
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, 65'536);
    limit(RLIMIT_NOFILE, 64);
    constexpr rlim_t memory = 1'000'000'000;
    if (addressSpace() < memory) // a sanitizer has reserved more
        limit(RLIMIT_AS, memory);
    confineFiles(readable);
}

} // namespace tarvik
