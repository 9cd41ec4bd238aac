// Texts: UTF-8 on our side, CFString on the system's.
#pragma once

#include "platform/macos/cf_ref.h"

#include <string>
#include <string_view>

namespace tarvik {

std::string text(CFStringRef string);
/// Empty when the bytes are not UTF-8.
CfRef<CFStringRef> cfString(std::string_view utf8);

} // namespace tarvik
