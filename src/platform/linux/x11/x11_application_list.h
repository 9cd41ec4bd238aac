// The applications of the session, with names and icons from their desktop files.
#pragma once

#include "platform/linux/common/desktop_entries.h"
#include "ports/applications.h"

#include <memory>

namespace tarvik {

/// An application runs while it owns a normal top-level window. Main thread; needs a QGuiApplication.
class X11ApplicationList final : public Applications {
public:
    explicit X11ApplicationList(std::shared_ptr<const DesktopEntries> entries);

    std::vector<RunningApplication> running() override;
    std::optional<InstalledApplication> installed(std::string_view id, int iconSize) override;
    std::string ownId() const override;

private:
    const std::shared_ptr<const DesktopEntries> entries_;
};

} // namespace tarvik
