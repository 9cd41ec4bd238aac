// The toolkit's application object, which the program's window needs, and its main loop, which is the system's.
#pragma once

#include <memory>

namespace tarvik {

/// Main thread.
class ToolkitLoop {
public:
    ToolkitLoop(int& argc, char** argv);
    ~ToolkitLoop();
    ToolkitLoop(const ToolkitLoop&) = delete;
    ToolkitLoop& operator=(const ToolkitLoop&) = delete;

    /// Until the application terminates; the exit code.
    int run();

private:
    class Application;
    std::unique_ptr<Application> application_;
};

} // namespace tarvik
