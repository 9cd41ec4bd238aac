// Everything that actions need on X11, on a connection of its own.
#pragma once

#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/x11/x11_applications.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_desktop_shell.h"
#include "platform/linux/x11/x11_ewmh.h"
#include "platform/linux/x11/x11_key_poster.h"
#include "platform/linux/x11/x11_windows.h"
#include "support/log.h"

#include <functional>
#include <memory>

namespace tarvik {

/// Made and destroyed by whoever owns the actions' thread, while that thread does not use it. A connection that breaks
/// is logged and not made again: without its display server the session is over.
class X11ActionsPlatform {
public:
    /// Null when the display does not answer. `lost` is called once, on the actions' thread, when the connection
    /// breaks.
    static std::unique_ptr<X11ActionsPlatform> open(const std::shared_ptr<const DesktopEntries>& entries, LogSink& log,
                                                    std::function<void()> lost);
    X11ActionsPlatform(const X11ActionsPlatform&) = delete;
    X11ActionsPlatform& operator=(const X11ActionsPlatform&) = delete;

    KeyPoster& keys() { return keys_; }
    DesktopShell& shell() { return shell_; }
    Windows& windows() { return windows_; }
    Workspace& workspace() { return workspace_; }

private:
    X11ActionsPlatform(std::unique_ptr<X11Connection> x, const std::shared_ptr<const DesktopEntries>& entries,
                       LogSink& log);

    const std::unique_ptr<X11Connection> x_;
    const X11Ewmh ewmh_;
    X11KeyPoster keys_;
    X11DesktopShell shell_;
    X11Windows windows_;
    X11Workspace workspace_;
};

} // namespace tarvik
