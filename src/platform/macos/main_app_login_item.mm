#import "platform/macos/main_app_login_item.h"

#import "platform/macos/ns_text.h"

#import <ServiceManagement/ServiceManagement.h>

namespace tarvik {

bool MainAppLoginItem::enabled() const {
    @autoreleasepool {
        return [[SMAppService mainAppService] status] == SMAppServiceStatusEnabled;
    }
}

std::optional<std::string> MainAppLoginItem::setEnabled(bool on) {
    @autoreleasepool {
        SMAppService* service = [SMAppService mainAppService];
        NSError* error = nil;
        const bool done = on ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
        return done ? std::nullopt : std::optional(text([error description]));
    }
}

} // namespace tarvik
