// The keys typed into the program's windows, taken before any control or shortcut gets them.
#pragma once

#include "ports/key_monitor.h"

#include <QObject>

#include <cstdint>
#include <optional>

class QKeyEvent;

namespace tarvik {

/// A filter on the application's events. Also keeps away what follows a press that it reported, its repetitions and its
/// release: a key that was recorded must not press the button that has the focus. Main thread; needs a
/// QCoreApplication.
class QtKeyMonitor final : public QObject, public KeyMonitor {
public:
    void start(std::function<void(TypedKey)> handler) override;
    void stop() override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool press(const QKeyEvent& event);

    std::function<void(TypedKey)> handler_;
    /// The X server's code of the key that was reported last, until it is released.
    std::optional<std::uint32_t> held_;
};

} // namespace tarvik
