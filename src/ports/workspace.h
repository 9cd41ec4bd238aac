// The applications of the session.
#pragma once

#include <optional>
#include <string>

namespace tarvik {

/// The application that is active, as the engine asks for it at a press.
class Frontmost {
public:
    virtual ~Frontmost() = default;
    /// The bundle identifier on macOS, the desktop-file id on Linux; nothing when no application is active or it has
    /// none. Tap's thread; answers from memory.
    virtual std::optional<std::string> frontmostApplication() const = 0;
};

/// Asked while an action is carried out.
class Workspace {
public:
    virtual ~Workspace() = default;
    /// Whether the active application is a terminal emulator. The actions' thread.
    virtual bool frontmostIsTerminal() = 0;
};

} // namespace tarvik
