// What the application framework tells the adapters that speak C, told by the test.
#pragma once

#include "platform/macos/opener.h"
#include "platform/macos/session_applications.h"

#include <map>
#include <set>
#include <vector>

namespace tarvik {

class FakeSessionApplications final : public SessionApplications {
public:
    std::optional<pid_t> frontmost;
    std::map<pid_t, std::string> names;

    std::optional<pid_t> frontmostProcess() const override { return frontmost; }
    std::optional<std::string> localizedName(pid_t process) const override {
        const auto found = names.find(process);
        return found == names.end() ? std::nullopt : std::optional(found->second);
    }
};

class FakeOpener final : public Opener {
public:
    std::set<std::string> files;
    std::vector<std::string> opened;

    bool fileExists(const std::string& path) const override { return files.contains(path); }
    void openFile(const std::string& path) override { opened.push_back("file " + path); }
    void openUrl(const std::string& url) override { opened.push_back(url); }
};

} // namespace tarvik
