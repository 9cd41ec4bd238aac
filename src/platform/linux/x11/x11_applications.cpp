#include "platform/linux/x11/x11_applications.h"

#include "platform/linux/x11/x11_property.h"

#include <utility>

namespace tarvik {
namespace {

/// Either the entry or, where none fits, the window's own name for its application.
struct Application {
    const DesktopEntry* entry = nullptr;
    std::string ownName;
};

Application applicationOf(const X11Connection& x, XWindow window, const DesktopEntries& entries) {
    Application application;
    for (const auto property : {x.atoms().gtkApplicationId, x.atoms().kdeDesktopFile}) {
        auto id = readText(x, window, property);
        if (const auto* entry = entries.byId(id))
            return {entry, {}};
        if (application.ownName.empty())
            application.ownName = std::move(id);
    }
    auto [instance, className] = readWmClass(x, window);
    if (const auto* entry = entries.byWmClass(instance, className))
        return {entry, {}};
    if (application.ownName.empty())
        application.ownName = std::move(className.empty() ? instance : className);
    return application;
}

std::optional<std::string> unlessEmpty(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

} // namespace

std::optional<std::string> applicationId(const X11Connection& x, XWindow window, const DesktopEntries& entries) {
    auto application = applicationOf(x, window, entries);
    return application.entry ? application.entry->id : unlessEmpty(std::move(application.ownName));
}

std::optional<std::string> applicationName(const X11Connection& x, XWindow window, const DesktopEntries& entries) {
    const auto application = applicationOf(x, window, entries);
    return unlessEmpty(application.entry ? application.entry->name : application.ownName);
}

X11Workspace::X11Workspace(const X11Ewmh& ewmh, std::shared_ptr<const DesktopEntries> entries)
    : ewmh_(ewmh), entries_(std::move(entries)) {}

bool X11Workspace::frontmostIsTerminal() {
    const auto window = ewmh_.activeWindow();
    const auto id = window ? applicationId(ewmh_.connection(), *window, *entries_) : std::nullopt;
    const auto* entry = id ? entries_->byId(*id) : nullptr;
    return entry && entry->hasCategory("TerminalEmulator");
}

} // namespace tarvik
