#include "platform/macos/dock_shell.h"

#include "platform/macos/cf_text.h"

#include <dlfcn.h>
#include <string>

namespace tarvik {
namespace {

constexpr auto framework = "/System/Library/Frameworks/ApplicationServices.framework/ApplicationServices";
/// Takes the place of Launchpad from macOS 26 on.
constexpr auto appsBundle = "/System/Applications/Apps.app";

} // namespace

DockFunction coreDockSendNotification() {
    static const auto function = [] {
        void* image = dlopen(framework, RTLD_LAZY);
        return image ? reinterpret_cast<DockFunction>(dlsym(image, "CoreDockSendNotification")) : nullptr;
    }();
    return function;
}

bool DockShell::perform(ActionKind kind) {
    switch (kind) {
    case ActionKind::missionControl:
        return notify("com.apple.expose.awake");
    case ActionKind::appExpose:
        return notify("com.apple.expose.front.awake");
    case ActionKind::showDesktop:
        return notify("com.apple.showdesktop.awake");
    case ActionKind::launchpad:
        if (!opener_.fileExists(appsBundle))
            return notify("com.apple.launchpad.toggle");
        opener_.openFile(appsBundle);
        return true;
    default:
        return false;
    }
}

bool DockShell::notify(const char* name) {
    const auto function = lookUp_();
    if (!function)
        return false;
    log_.write(std::string("dock notification ") + name);
    function(cfString(name).get(), 0);
    return true;
}

} // namespace tarvik
