// Keys typed into the program's own windows.
#pragma once

#import "platform/macos/objc_ref.h"

#include "ports/key_monitor.h"

namespace tarvik {

class AppKitKeyMonitor final : public KeyMonitor {
public:
    AppKitKeyMonitor() = default;
    ~AppKitKeyMonitor() override { stop(); }
    AppKitKeyMonitor(const AppKitKeyMonitor&) = delete;
    AppKitKeyMonitor& operator=(const AppKitKeyMonitor&) = delete;

    void start(std::function<void(TypedKey)> handler) override;
    void stop() override;

private:
    ObjcRef<id> monitor_;
};

} // namespace tarvik
