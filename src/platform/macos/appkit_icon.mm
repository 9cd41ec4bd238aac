#import "platform/macos/appkit_icon.h"

#import "platform/macos/cf_ref.h"

#include <CoreGraphics/CoreGraphics.h>

namespace tarvik {

std::optional<IconPixels> iconPixels(NSImage* image, int size) {
    IconPixels icon{size, size, {}};
    icon.argb.resize(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    const auto side = static_cast<std::size_t>(size);
    const auto colours = CfRef<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    // The rows of a bitmap context lie in memory from the top, although its coordinates begin at the bottom.
    const auto context = CfRef<CGContextRef>::adopt(
        CGBitmapContextCreate(icon.argb.data(), side, side, 8, side * sizeof(std::uint32_t), colours.get(),
                              static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedFirst) |
                                  static_cast<CGBitmapInfo>(kCGBitmapByteOrder32Host)));
    NSRect square = NSMakeRect(0, 0, size, size);
    // The best of the image's representations for that many pixels; it stays the image's.
    CGImageRef pixels = [image CGImageForProposedRect:&square context:nil hints:nil];
    if (!context || !pixels)
        return std::nullopt;
    CGContextDrawImage(context.get(), CGRectMake(0, 0, size, size), pixels);
    return icon;
}

} // namespace tarvik
