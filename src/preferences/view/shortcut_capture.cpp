#include "preferences/view/shortcut_capture.h"

namespace tarvik {

void ShortcutCapture::start(const QString& gesture) {
    active_ = true;
    gesture_ = gesture;
    refused_ = false;
    monitor_.start([this](const TypedKey& key) { take(key); });
    emit changed();
}

void ShortcutCapture::stop() {
    if (!active_)
        return;
    monitor_.stop();
    active_ = false;
    refused_ = false;
    emit changed();
}

void ShortcutCapture::take(const TypedKey& key) {
    if (!key.keyCode) {
        refused_ = true;
        emit changed();
        return;
    }
    constexpr auto kept = flags::shift | flags::control | flags::option | flags::command;
    if (*key.keyCode != key::escape)
        gestures_.setShortcut(gesture_, {*key.keyCode, key.modifiers & kept});
    stop();
}

} // namespace tarvik
