// Core Graphics: paths, colours, images and bitmaps.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CGGeometry.h>

extern "C" {

typedef struct CGColor* CGColorRef;
typedef const struct CGPath* CGPathRef;
typedef struct CGPath* CGMutablePathRef;
struct CGAffineTransform;
CGMutablePathRef CGPathCreateMutable(void);
void CGPathMoveToPoint(CGMutablePathRef path, const CGAffineTransform* transform, CGFloat x, CGFloat y);
void CGPathAddLineToPoint(CGMutablePathRef path, const CGAffineTransform* transform, CGFloat x, CGFloat y);

typedef struct CGContext* CGContextRef;
typedef struct CGImage* CGImageRef;
typedef struct CGColorSpace* CGColorSpaceRef;
enum CGImageAlphaInfo : std::uint32_t { kCGImageAlphaPremultipliedFirst = 2 };
typedef std::uint32_t CGBitmapInfo;
enum : std::uint32_t { kCGBitmapByteOrder32Little = 2 << 12 };
#define kCGBitmapByteOrder32Host kCGBitmapByteOrder32Little
extern const CFStringRef kCGColorSpaceSRGB;
CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name);
CGContextRef CGBitmapContextCreate(void* data, std::size_t width, std::size_t height, std::size_t bitsPerComponent,
                                   std::size_t bytesPerRow, CGColorSpaceRef space, std::uint32_t bitmapInfo);
void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);

} // extern "C"
