// The Accessibility permission.
#pragma once

#include "platform/macos/opener.h"
#include "ports/permission.h"

namespace tarvik {

class AxPermission final : public Permission {
public:
    explicit AxPermission(Opener& opener) : opener_(opener) {}

    bool trusted() override;
    bool request() override;
    void openSettings() override;

private:
    Opener& opener_;
};

} // namespace tarvik
