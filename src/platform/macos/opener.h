// Files and pages, opened as the Finder would.
#pragma once

#include <string>

namespace tarvik {

/// Main thread.
class Opener {
public:
    virtual ~Opener() = default;
    virtual bool fileExists(const std::string& path) const = 0;
    virtual void openFile(const std::string& path) = 0;
    virtual void openUrl(const std::string& url) = 0;
};

} // namespace tarvik
