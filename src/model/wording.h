// What the program says in its menu and windows where platforms differ. One table per platform; texts that are the same
// everywhere stand where they are used.
#pragma once

#include <string_view>

namespace tarvik {

struct Wording {
    /// The menu's item and the banner that show while the permission is missing.
    std::string_view grantPermission;
    std::string_view permissionTitle;
    std::string_view permissionExplanation;
    std::string_view permissionButton;
    /// The entries of the wheel's binding that name something of the desktop.
    std::string_view switchDesktops;
    /// The last entry of the footer under "Mouse Scrolling".
    std::string_view scrollingFooter;
    /// Help.
    std::string_view switchingDesktops;
    std::string_view tabs;
    /// About.
    std::string_view subtitle;
};

const Wording& macosWording();
const Wording& linuxWording();

} // namespace tarvik
