// What the system is told that the process is busy with.
#pragma once

#import "platform/macos/objc_ref.h"

#include "ports/activity.h"

namespace tarvik {

class ProcessActivity final : public Activity {
public:
    void beginLatencyCritical(std::string_view reason) override;

private:
    ObjcRef<id> token_;
};

} // namespace tarvik
