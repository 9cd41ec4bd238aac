#include "platform/linux/common/qt_key_monitor.h"

#include "model/key_shortcut.h"
#include "platform/linux/common/key_codes.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>

#include <utility>

namespace tarvik {
namespace {

/// The X server's codes are the kernel's, moved by the eight that its core protocol leaves out.
constexpr std::uint32_t xKeyCodeOffset = 8;
/// LockMask of the X protocol, and the bit that stands for the key in a modifier word.
constexpr std::uint32_t nativeCapsLock = 1u << 1;
constexpr std::uint64_t capsLock = 0x10000;

bool isModifier(int key) {
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Mode_switch:
        return true;
    default:
        return false;
    }
}

std::optional<std::uint16_t> positionOf(const QKeyEvent& event) {
    const auto code = event.nativeScanCode();
    if (code < xKeyCodeOffset || code - xKeyCodeOffset > 0xFFFF)
        return std::nullopt;
    return keyCodeFromEvdev(static_cast<std::uint16_t>(code - xKeyCodeOffset));
}

std::uint64_t modifiersOf(const QKeyEvent& event) {
    static constexpr std::pair<Qt::KeyboardModifier, std::uint64_t> table[] = {
        {Qt::ShiftModifier, flags::shift},  {Qt::ControlModifier, flags::control},   {Qt::AltModifier, flags::option},
        {Qt::MetaModifier, flags::command}, {Qt::KeypadModifier, flags::numericPad},
    };
    std::uint64_t word = event.nativeModifiers() & nativeCapsLock ? capsLock : 0;
    for (const auto& [modifier, flag] : table) {
        if (event.modifiers() & modifier)
            word |= flag;
    }
    return word;
}

} // namespace

void QtKeyMonitor::start(std::function<void(TypedKey)> handler) {
    handler_ = std::move(handler);
    qApp->installEventFilter(this);
}

void QtKeyMonitor::stop() {
    handler_ = {};
    if (!held_)
        qApp->removeEventFilter(this);
}

bool QtKeyMonitor::eventFilter(QObject* receiver, QEvent* event) {
    // Events pass here for the window first, then for what is in it.
    if (!receiver->isWindowType())
        return false;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Accepted, so that no shortcut of the window takes the key before it comes here as a press.
        event->setAccepted(handler_ || static_cast<QKeyEvent*>(event)->nativeScanCode() == held_);
        return event->isAccepted();
    case QEvent::KeyPress:
        return press(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (held_ != key.nativeScanCode())
            return false;
        if (!key.isAutoRepeat()) {
            held_.reset();
            if (!handler_)
                qApp->removeEventFilter(this);
        }
        return true;
    }
    default:
        return false;
    }
}

bool QtKeyMonitor::press(const QKeyEvent& event) {
    if (event.isAutoRepeat() && held_ == event.nativeScanCode())
        return true;
    if (!handler_)
        return false;
    if (isModifier(event.key()))
        return true;
    held_ = event.nativeScanCode();
    // A copy: the handler may take itself back.
    const auto handler = handler_;
    handler({positionOf(event), modifiersOf(event)});
    return true;
}

} // namespace tarvik
