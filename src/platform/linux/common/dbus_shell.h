// What desktops offer over the session bus.
#pragma once

#include "model/action_kind.h"
#include "support/log.h"

#include <memory>

namespace tarvik {

/// Overview, windows of the application and launcher of the desktops that offer them on the session bus. Only desktops
/// that run already are asked; nothing is started to answer. The connection is made at the first use and is the
/// object's own. Calls wait for the answer, each for at most a second. Used by one thread at a time.
class DBusShell {
public:
    explicit DBusShell(LogSink& log);
    ~DBusShell();
    DBusShell(const DBusShell&) = delete;
    DBusShell& operator=(const DBusShell&) = delete;

    /// True when a desktop took the action on; one that does not answer in time has it, since its keys would wait as
    /// well. Logs what it did.
    bool perform(ActionKind kind);

private:
    LogSink& log_;
    const std::unique_ptr<class SessionBus> bus_;
};

} // namespace tarvik
