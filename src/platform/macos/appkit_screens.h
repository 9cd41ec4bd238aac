// The displays, from the application framework.
#pragma once

#import "platform/macos/observation.h"

#include "ports/screens.h"

#include <mutex>

namespace tarvik {

/// Reads the list on the main thread, when it is made and after each change; others get what was read last. Units are
/// points, whatever a display's scale.
class AppKitScreens final : public Screens {
public:
    AppKitScreens();

    std::vector<Screen> screens() const override;
    void onChange(std::function<void()> handler) override;

private:
    void read();

    mutable std::mutex mutex_;
    std::vector<Screen> screens_;
    std::function<void()> changed_;
    Observation observation_;
};

} // namespace tarvik
