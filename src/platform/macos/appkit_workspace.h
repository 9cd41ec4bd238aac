// The applications of the session as the adapters ask for them, and opening things.
#pragma once

#include "platform/macos/opener.h"
#include "platform/macos/session_applications.h"
#include "ports/workspace.h"

namespace tarvik {

/// Main thread, which is the tap's and the actions' too.
class AppKitWorkspace final : public Frontmost, public Workspace, public SessionApplications, public Opener {
public:
    std::optional<std::string> frontmostApplication() const override;
    /// No built-in action has other keys in a terminal here.
    bool frontmostIsTerminal() override { return false; }

    std::optional<pid_t> frontmostProcess() const override;
    std::optional<std::string> localizedName(pid_t process) const override;

    bool fileExists(const std::string& path) const override;
    void openFile(const std::string& path) override;
    void openUrl(const std::string& url) override;
};

} // namespace tarvik
