#include "macos/appkit/toolkit.h"

#include "platform/macos/toolkit_loop.h"
#include "preferences/preferences_window.h"

#import <AppKit/AppKit.h>

namespace tarvik {

std::function<void()> toolkit::script;
int toolkit::preferencesShown = 0;
int toolkit::preferencesMade = 0;

class ToolkitLoop::Application {};
/// It takes the program for one with a Dock icon.
ToolkitLoop::ToolkitLoop(int&, char**) {
    [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyRegular];
}
ToolkitLoop::~ToolkitLoop() = default;
int ToolkitLoop::run() {
    toolkit::script();
    return 0;
}

namespace {

class CountedWindow final : public PreferencesWindow {
public:
    void show() override { ++toolkit::preferencesShown; }
    void whenClosed(std::function<void()>) override {}
};

} // namespace

std::unique_ptr<PreferencesWindow> loadPreferencesWindow(const PreferencesContext&, LogSink&) {
    ++toolkit::preferencesMade;
    return std::make_unique<CountedWindow>();
}

} // namespace tarvik
