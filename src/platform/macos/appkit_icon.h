// Images of the application framework as plain pixels.
#pragma once

#include "ports/applications.h"

#import <AppKit/AppKit.h>

#include <optional>

namespace tarvik {

/// `size` x `size` pixels; nothing when the image cannot be drawn.
std::optional<IconPixels> iconPixels(NSImage* image, int size);

} // namespace tarvik
