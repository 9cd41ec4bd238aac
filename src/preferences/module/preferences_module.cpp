#include "preferences/preferences_module.h"

#include "preferences/view/quick_window.h"

extern "C" __attribute__((visibility("default"))) tarvik::PreferencesWindow*
TARVIK_PREFERENCES_ENTRY(const tarvik::PreferencesContext& context, tarvik::LogSink& log) {
    return tarvik::QuickWindow::make(context, log).release();
}
