// The windows of other applications on X11.
#pragma once

#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/x11/x11_ewmh.h"
#include "ports/windows.h"

#include <memory>

namespace tarvik {

/// Points and frames are in device pixels of the root window.
class X11Windows final : public Windows {
public:
    X11Windows(const X11Ewmh& ewmh, std::shared_ptr<const DesktopEntries> entries);
    /// The topmost managed window under the point, decorations included; panels and the desktop's own window do not
    /// count. The windows it returns must not outlive this object.
    std::unique_ptr<Window> targetWindow(std::optional<Point> point) override;

private:
    std::optional<XWindow> windowAt(Point point) const;

    const X11Ewmh& ewmh_;
    const std::shared_ptr<const DesktopEntries> entries_;
};

} // namespace tarvik
