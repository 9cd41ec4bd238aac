#include "platform/linux/common/text_file.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace tarvik {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }

private:
    const int number_;
};

std::error_code writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const auto count = write(file, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return lastError();
        text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return fsync(file) == 0 ? std::error_code() : lastError();
}

/// Where the text really is. A link that leads nowhere has a target all the same.
std::filesystem::path targetOf(std::filesystem::path file) {
    constexpr int mostLinks = 40; // as the kernel counts
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const auto target = std::filesystem::read_symlink(file, error);
        if (error)
            break;
        file = file.parent_path() / target;
    }
    return file;
}

/// Writes a new file beside `target`, and moves it there if that still holds `before`.
std::error_code exchange(const std::filesystem::path& target, std::string_view before, std::string_view text) {
    std::string name = target.string() + ".XXXXXX";
    const Descriptor file(mkostemp(name.data(), O_CLOEXEC));
    if (file.get() < 0)
        return lastError();
    auto error = writeAll(file.get(), text);
    struct stat old = {};
    if (!error && stat(target.c_str(), &old) == 0 && fchmod(file.get(), old.st_mode & 0777U) != 0)
        error = lastError();
    if (!error) {
        const auto now = readTextFile(target);
        error = now.error;
        if (!error && now.text != before)
            error = std::make_error_code(std::errc::resource_unavailable_try_again);
    }
    if (!error && std::rename(name.c_str(), target.c_str()) != 0)
        error = lastError();
    if (error)
        unlink(name.c_str());
    return error;
}

} // namespace

FileText readTextFile(const std::filesystem::path& file) {
    const Descriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (opened.get() < 0)
        return {{}, errno == ENOENT ? std::error_code() : lastError()};
    struct stat about = {};
    if (fstat(opened.get(), &about) != 0)
        return {{}, lastError()};
    if (!S_ISREG(about.st_mode))
        return {{},
                std::make_error_code(S_ISDIR(about.st_mode) ? std::errc::is_a_directory : std::errc::no_such_device)};

    std::string text;
    for (;;) {
        char part[4096];
        const auto count = read(opened.get(), part, sizeof part);
        if (count == 0)
            return {std::move(text), {}};
        if (count < 0 && errno != EINTR)
            return {{}, lastError()};
        text.append(part, count < 0 ? 0 : static_cast<std::size_t>(count));
        if (text.size() > maxTextFile)
            return {{}, std::make_error_code(std::errc::file_too_large)};
    }
}

std::error_code replaceTextFile(const std::filesystem::path& file, std::string_view before, std::string_view text) {
    std::error_code error;
    if (std::filesystem::create_directories(file.parent_path(), error))
        std::filesystem::permissions(file.parent_path(), std::filesystem::perms::owner_all, error);
    return exchange(targetOf(file), before, text);
}

std::error_code createTextFile(const std::filesystem::path& file, std::string_view text) {
    const Descriptor created(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (created.get() < 0)
        return lastError();
    const auto error = writeAll(created.get(), text);
    if (error)
        unlink(file.c_str());
    return error;
}

FolderLock::FolderLock(const std::filesystem::path& folder)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    for (int i = 0; folder_ >= 0 && i < 100 && flock(folder_, LOCK_EX | LOCK_NB) != 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

FolderLock::~FolderLock() {
    if (folder_ >= 0)
        close(folder_);
}

} // namespace tarvik
