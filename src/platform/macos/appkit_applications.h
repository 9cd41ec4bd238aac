// The applications that run and those that are installed.
#pragma once

#include "ports/applications.h"

namespace tarvik {

class AppKitApplications final : public Applications {
public:
    std::vector<RunningApplication> running() override;
    std::optional<InstalledApplication> installed(std::string_view id, int iconSize) override;
    std::string ownId() const override;
};

} // namespace tarvik
