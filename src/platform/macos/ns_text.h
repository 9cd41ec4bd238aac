// Texts: UTF-8 on our side, NSString on the system's.
#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

/// Autoreleased. Empty, not nil, when the bytes are not UTF-8.
NSString* nsString(std::string_view utf8);
/// Empty for nil.
std::string text(NSString* string);
/// Nothing for nil.
std::optional<std::string> optionalText(NSString* string);

} // namespace tarvik
