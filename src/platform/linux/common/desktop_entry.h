// One application, as its desktop file describes it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

struct DesktopEntry {
    /// The name of the file below the applications folder, folders joined with '-', without ".desktop".
    std::string id;
    /// In the user's language.
    std::string name;
    /// A name in the icon theme or the path of a file.
    std::string icon;
    std::string startupWmClass;
    /// The program without its folder; empty for programs that run others (shells, interpreters, sandboxes).
    std::string program;
    std::vector<std::string> categories;
    /// Not shown in menus, but an application all the same.
    bool noDisplay = false;
    /// To be treated as if the file did not exist.
    bool hidden = false;

    bool hasCategory(std::string_view category) const;
};

/// Reads the group [Desktop Entry] of a desktop file (Desktop Entry Specification 1.5). Nothing when there is none or
/// when it describes something other than an application. `locale` is a POSIX locale such as "de_AT.UTF-8@euro", or
/// empty. Texts are printable and of limited length, whatever the file holds.
std::optional<DesktopEntry> parseDesktopEntry(std::string id, std::string_view text, std::string_view locale);

} // namespace tarvik
