#import "platform/macos/observation.h"

#include <utility>

namespace tarvik {

Observation::Observation(NSNotificationCenter* center, NSNotificationName name, std::function<void()> handler)
    : handler_(std::make_shared<const std::function<void()>>(std::move(handler)))
    , center_(ObjcRef<NSNotificationCenter*>::retain(center)) {
    const std::weak_ptr weak = handler_;
    token_ = ObjcRef<id>::retain([center addObserverForName:name
                                                     object:nil
                                                      queue:[NSOperationQueue mainQueue]
                                                 usingBlock:^(NSNotification*) {
                                                   if (const auto alive = weak.lock())
                                                       (*alive)();
                                                 }]);
}

Observation::~Observation() { [center_ removeObserver:token_]; }

} // namespace tarvik
