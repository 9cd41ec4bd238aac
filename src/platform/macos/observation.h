// Being told of what happens in the system.
#pragma once

#import "platform/macos/objc_ref.h"

#include <functional>
#include <memory>

namespace tarvik {

/// Calls the handler on the main thread for every notification of that name, whoever sent it, until it is destroyed.
/// A notification that is on its way then finds nobody.
class Observation {
public:
    Observation(NSNotificationCenter* center, NSNotificationName name, std::function<void()> handler);
    ~Observation();
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;

private:
    const std::shared_ptr<const std::function<void()>> handler_;
    ObjcRef<NSNotificationCenter*> center_;
    ObjcRef<id> token_;
};

} // namespace tarvik
