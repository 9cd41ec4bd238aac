// The applications that run, and those that are installed, as people see them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

struct RunningApplication {
    std::int64_t processId = 0;
    /// The bundle identifier on macOS, the desktop-file id on Linux.
    std::optional<std::string> id;
    std::optional<std::string> name;
    /// An ordinary application with windows, not an agent.
    bool regular = false;
};

/// Premultiplied ARGB, 32 bits a pixel in native byte order, rows from the top without padding.
struct IconPixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> argb;
};

struct InstalledApplication {
    std::string name;
    std::optional<IconPixels> icon;
};

/// Main thread.
class Applications {
public:
    virtual ~Applications() = default;
    /// In the system's order.
    virtual std::vector<RunningApplication> running() = 0;
    /// The application of an identifier; `iconSize` in pixels, 0 for no icon. Nothing when none is installed.
    virtual std::optional<InstalledApplication> installed(std::string_view id, int iconSize) = 0;
    /// The program's own identifier.
    virtual std::string ownId() const = 0;
};

} // namespace tarvik
