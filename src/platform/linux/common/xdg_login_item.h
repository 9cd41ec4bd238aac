// Starting with the session, by the Desktop Application Autostart Specification.
#pragma once

#include "ports/login_item.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tarvik {

/// The entry "tarvik.desktop" in the user's autostart folder. Desktops' own settings switch entries off by a key in
/// them, so the file is read each time.
class XdgLoginItem final : public LoginItem {
public:
    /// `autostartFolder` is made when it is needed; `program` is the absolute path of the executable.
    XdgLoginItem(const std::filesystem::path& autostartFolder, std::filesystem::path program)
        : file_(autostartFolder / "tarvik.desktop"), program_(std::move(program)) {}

    bool enabled() const override;
    std::optional<std::string> setEnabled(bool on) override;

private:
    std::optional<std::string> refusal(const std::error_code& error) const;

    const std::filesystem::path file_;
    const std::filesystem::path program_;
};

/// Whether a desktop would start the entry. `desktop` is a list of names separated by colons, as XDG_CURRENT_DESKTOP.
bool startsWithSession(std::string_view entry, std::string_view desktop);

/// A path as one argument of the key Exec.
std::string execArgument(std::string_view path);

} // namespace tarvik
