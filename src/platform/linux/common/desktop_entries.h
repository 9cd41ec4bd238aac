// The applications that are installed, by their desktop files.
#pragma once

#include "platform/linux/common/desktop_entry.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvik {

/// Immutable once built, so any thread may ask. Pointers live as long as the index.
class DesktopEntries {
public:
    /// Reads the files below the user's and the system's application folders (XDG_DATA_HOME, XDG_DATA_DIRS) with names
    /// in the language of the environment. Takes a few milliseconds and reads the disk.
    static std::shared_ptr<const DesktopEntries> load();

    /// `folders` are "applications" folders, the more important ones first: of two files with the same id the first
    /// counts.
    DesktopEntries(const std::vector<std::filesystem::path>& folders, std::string_view locale);
    DesktopEntries(const DesktopEntries&) = delete;
    DesktopEntries& operator=(const DesktopEntries&) = delete;

    /// Null when there is no such application. A trailing ".desktop" is allowed.
    const DesktopEntry* byId(std::string_view id) const;
    /// The application that a window belongs to by its WM_CLASS, whatever the case of the letters: an application that
    /// claims the class or the instance, one with that id, one whose id ends with it ("org.example.Editor" and
    /// "editor"), one whose program is called so. Null when none fits.
    const DesktopEntry* byWmClass(std::string_view instance, std::string_view className) const;

    const std::vector<DesktopEntry>& all() const { return entries_; }

private:
    using Index = std::unordered_map<std::string, std::size_t>;

    void readFolder(const std::filesystem::path& folder, std::string_view locale, Index& seen);
    void buildIndexes();
    void claim(Index& index, std::string_view key, std::size_t entry);
    const DesktopEntry* find(const Index& index, std::string_view key) const;

    std::vector<DesktopEntry> entries_;
    // Keys are in lower case, except in byId_.
    Index byId_;
    Index byClaimedClass_;
    Index byLowerId_;
    Index byLastPart_;
    Index byProgram_;
};

} // namespace tarvik
