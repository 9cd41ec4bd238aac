// The keyboard layout of an X11 session.
#pragma once

#include "ports/keyboard_layout.h"
#include "support/log.h"

#include <functional>
#include <memory>
#include <mutex>

namespace tarvik {

/// The keymap of the keyboard that is in use (the one that keys are posted on), in the current group. A layout that the
/// user switches to holds from the next call on: each call first reads what the server has reported, without waiting.
/// The connection is its own, so that any thread may ask; it carries events only when the layout or the group changes.
class X11KeyboardLayout final : public KeyboardLayout {
public:
    /// `changed` is called after a position has got another character, on the thread whose call found out.
    explicit X11KeyboardLayout(LogSink& log, std::function<void()> changed = {});
    ~X11KeyboardLayout() override;

    std::optional<std::string> character(std::uint16_t keyCode) const override;
    std::optional<std::uint16_t> positionOf(char letter) const override;

    /// Becomes readable when there may be something to `refresh`; -1 when there is no connection.
    int fileDescriptor() const;
    /// Reads what the server has reported, without waiting.
    void refresh() const;

private:
    class Keymap;
    struct Snapshot;

    std::shared_ptr<const Snapshot> current() const;

    const std::function<void()> changed_;
    mutable std::mutex mutex_;
    const std::unique_ptr<Keymap> keymap_; // used under the mutex
    mutable std::shared_ptr<const Snapshot> snapshot_;
};

} // namespace tarvik
