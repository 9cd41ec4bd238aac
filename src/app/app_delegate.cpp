#include "app/app_delegate.h"

#include "app/status_menu.h"

#include <chrono>

namespace tarvik {

void AppDelegate::applicationDidFinishLaunching() {
    parts_.activity.beginLatencyCritical("Mouse gesture event tap");
    parts_.log.write(std::string("launched; accessibility trusted=") +
                     (parts_.permissions.trusted() ? "true" : "false"));

    parts_.statusItem.setMenu([this] { return menuNeedsUpdate(); });
    updateIcon();
    enabledSubscription_ = parts_.settings.observe([this](Setting setting) {
        if (setting == Setting::enabled)
            updateIcon();
    });

    if (parts_.permissions.trusted()) {
        startEngine();
    } else {
        parts_.permissions.request();
        showPreferences();
        waitForPermission();
    }
}

void AppDelegate::programWasReplaced() {
    if (prefsWindow_)
        prefsWindow_->whenClosed(hooks_.makeWay);
    else
        hooks_.makeWay();
}

std::vector<MenuItem> AppDelegate::menuNeedsUpdate() {
    parts_.permissions.refresh();
    return statusMenu({parts_.settings.enabled(), parts_.permissions.trusted(), parts_.updater.configured()},
                      {[this] { toggleEnabled(); }, [this] { grantPermission(); }, [this] { openPreferences(); },
                       [this] { checkForUpdates(); }, hooks_.terminate},
                      parts_.wording);
}

void AppDelegate::toggleEnabled() { parts_.settings.setEnabled(!parts_.settings.enabled()); }

void AppDelegate::grantPermission() {
    parts_.permissions.request();
    parts_.permissions.openSettings();
    waitForPermission();
}

void AppDelegate::showPreferences() {
    if (!prefsWindow_)
        prefsWindow_ = hooks_.makePreferences();
    if (prefsWindow_)
        prefsWindow_->show();
}

void AppDelegate::updateIcon() {
    const bool active = parts_.settings.enabled() && hooks_.engineRuns();
    parts_.statusItem.setIcon(active ? StatusIcon::handDraw : StatusIcon::handRaisedSlash, "Tarvik", !active);
}

void AppDelegate::startEngine() {
    if (!hooks_.startEngine()) {
        parts_.systemLog.write("Tarvik: could not create event tap (Accessibility permission missing?)");
        waitForPermission();
    }
    updateIcon();
}

void AppDelegate::waitForPermission() {
    permissionTimer_.emplace(parts_.mainQueue, std::chrono::seconds(1), [this] { checkPermission(); });
}

void AppDelegate::checkPermission() {
    parts_.permissions.refresh();
    if (!parts_.permissions.trusted())
        return;
    permissionTimer_.reset();
    startEngine();
}

} // namespace tarvik
