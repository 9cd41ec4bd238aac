// Everything that Tarvik asks of an operating system, in one place. One implementation is linked in.
#pragma once

#include "model/vocabulary.h"
#include "model/wording.h"
#include "ports/activation.h"
#include "ports/activity.h"
#include "ports/appearance.h"
#include "ports/applications.h"
#include "ports/defaults_store.h"
#include "ports/desktop_shell.h"
#include "ports/event_tap.h"
#include "ports/key_monitor.h"
#include "ports/key_poster.h"
#include "ports/keyboard_layout.h"
#include "ports/login_item.h"
#include "ports/permission.h"
#include "ports/screens.h"
#include "ports/status_item.h"
#include "ports/task_queue.h"
#include "ports/trail_panel.h"
#include "ports/update_channel.h"
#include "ports/windows.h"
#include "ports/workspace.h"
#include "support/log.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <variant>

namespace tarvik {

/// Owns the adapters and their threads. Made and destroyed on the main thread.
class Platform {
public:
    virtual ~Platform() = default;

    virtual const Vocabulary& vocabulary() const = 0;
    virtual const Wording& wording() const = 0;
    /// For the few messages that are the system's business; each begins with the program's name. Any thread.
    virtual LogSink& systemLog() = 0;
    virtual DefaultsStore& defaults() = 0;
    virtual LoginItem& loginItem() = 0;
    virtual MainQueue& mainQueue() = 0;
    /// Where actions are carried out.
    virtual TaskQueue& actionQueue() = 0;

    virtual EventTap& tap() = 0;
    virtual const Frontmost& frontmost() const = 0;
    virtual Screens& screens() = 0;
    virtual TrailPanels& trailPanels() = 0;

    virtual KeyPoster& keys() = 0;
    virtual KeyboardLayout& layout() = 0;
    /// Called on the main thread when a key has got another character.
    virtual void onLayoutChange(std::function<void()> handler) = 0;
    virtual DesktopShell& shell() = 0;
    virtual Windows& windows() = 0;
    virtual Workspace& workspace() = 0;

    /// For the program's own window.
    virtual Applications& applications() = 0;
    virtual KeyMonitor& keyMonitor() = 0;
    virtual Appearance& appearance() = 0;

    virtual StatusItem& statusItem() = 0;
    virtual Permission& permission() = 0;
    virtual Activity& activity() = 0;
    virtual Activation& activation() = 0;
    /// Null where updates are not configured.
    virtual UpdateChannel* updateChannel() = 0;

    /// Called on the main thread when the user starts the program while it runs.
    virtual void onReopen(std::function<void()> handler) = 0;
    /// Called on the main thread when another program lies where this one was started from, complete and ready to take
    /// over. Never where the system takes care of that itself.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): who can tell, keeps it
    virtual void onReplaced(std::function<void()> /*handler*/) {}
    /// Ends the main loop.
    virtual void terminate() = 0;
    /// The same as soon as no button is held, so that no click is lost, and with a successor.
    virtual void makeWay() {}
    /// Runs the main loop until the session, the user or a signal ends it; the process's exit code.
    virtual int run() = 0;
    /// Takes the tap out, so that no event is held, then lets the actions that are under way finish. No handler and no
    /// task runs after it returns.
    virtual void stop() = 0;
    /// To be called when the platform is gone: the program that takes over in this process, which only returns, with
    /// the exit code, when it cannot. Empty unless `makeWay` has ended the main loop.
    virtual std::function<int()> successor() { return {}; }
};

/// Where the log file is to be.
std::filesystem::path logFile();

/// The platform, or the exit code with which the program ends at once: because it cannot run here at all, which the log
/// and standard error say, or because it runs already and the other one now shows its preferences.
std::variant<std::unique_ptr<Platform>, int> makePlatform(int& argc, char** argv, LogSink& log);

} // namespace tarvik
