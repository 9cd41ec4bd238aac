// A small text file that others may write, too.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace tarvik {

struct FileText {
    std::string text;
    std::error_code error;
};

/// No file of text is larger; one that is counts as unreadable.
inline constexpr std::size_t maxTextFile = std::size_t{16} * 1024 * 1024;

/// A file that is missing, or a link that leads nowhere, reads as empty. Anything but a regular file is an error; a
/// pipe is not waited for.
FileText readTextFile(const std::filesystem::path& file);

/// Replaces `before`, the text that was read, atomically; when this returns without an error, the new text is on the
/// disk. A symbolic link stays one, and the file keeps its permissions. Fails with `resource_unavailable_try_again`
/// when somebody else has changed the file meanwhile. The file's folder is made, for the user alone, if there is none.
std::error_code replaceTextFile(const std::filesystem::path& file, std::string_view before, std::string_view text);

/// Fails with `file_exists` when there is one.
std::error_code createTextFile(const std::filesystem::path& file, std::string_view text);

/// Keeps other processes that lock the same folder out while it exists, for a second at most: who holds a lock longer
/// does not stop us.
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    const int folder_;
};

} // namespace tarvik
