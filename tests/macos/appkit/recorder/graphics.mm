// Colours, fonts, images, screens, and what Core Graphics draws with.
#include "macos/appkit/recorder/desk.h"

#include <CoreGraphics/CoreGraphics.h>

namespace tarvik::recorder {
namespace {

/// Types that only this simulation has.
enum : CFTypeID { pathType = 100, colourType, contextType, imageType, colourSpaceType };

struct Path : sim::Object {
    explicit Path(std::vector<CGPoint> p) : Object(static_cast<sim::TypeId>(pathType)), points(std::move(p)) {}
    std::vector<CGPoint> points;
};
struct ColourObject : sim::Object {
    explicit ColourObject(Colour c) : Object(static_cast<sim::TypeId>(colourType)), colour(std::move(c)) {}
    const Colour colour;
};
struct ColourSpace : sim::Object {
    ColourSpace() : Object(static_cast<sim::TypeId>(colourSpaceType)) {}
};
/// One colour all over, 0xAARRGGBB.
struct Image : sim::Object {
    explicit Image(std::uint32_t c) : Object(static_cast<sim::TypeId>(imageType)), colour(c) {}
    const std::uint32_t colour;
};
struct Bitmap : sim::Object {
    Bitmap(std::uint32_t* p, std::size_t w, std::size_t h)
        : Object(static_cast<sim::TypeId>(contextType)), pixels(p), width(w), height(h) {}
    std::uint32_t* const pixels;
    const std::size_t width;
    const std::size_t height;
};

NSColor* colour(const std::string& name, double alpha = 1) {
    NSColor* made = [[[NSColor alloc] init] autorelease];
    put(made, "colour", Colour{name, alpha});
    return made;
}

} // namespace

std::vector<CGPoint> pointsOf(CGPathRef path) { return sim::object<Path>(path).points; }
Colour colourOf(CGColorRef colour) { return sim::object<ColourObject>(colour).colour; }

} // namespace tarvik::recorder

using namespace tarvik;
using namespace tarvik::recorder;

const CFStringRef kCGColorSpaceSRGB = CFSTR("kCGColorSpaceSRGB");

CGMutablePathRef CGPathCreateMutable(void) { return sim::create<Path, CGMutablePathRef>(std::vector<CGPoint>()); }
extern "C" CGPathRef CGPathCreateCopy(CGPathRef path) { return sim::create<Path, CGPathRef>(pointsOf(path)); }
void CGPathMoveToPoint(CGMutablePathRef path, const CGAffineTransform*, CGFloat x, CGFloat y) {
    auto& points = sim::object<Path>(path).points;
    if (!points.empty())
        fatal("a path in two pieces");
    points.push_back({x, y});
}
void CGPathAddLineToPoint(CGMutablePathRef path, const CGAffineTransform*, CGFloat x, CGFloat y) {
    auto& points = sim::object<Path>(path).points;
    if (points.empty())
        fatal("a line that begins nowhere");
    points.push_back({x, y});
}

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name) {
    if (name != kCGColorSpaceSRGB)
        fatal("another colour space");
    return sim::create<ColourSpace, CGColorSpaceRef>();
}
CGContextRef CGBitmapContextCreate(void* data, std::size_t width, std::size_t height, std::size_t bits,
                                   std::size_t bytesPerRow, CGColorSpaceRef space, std::uint32_t info) {
    sim::object<ColourSpace>(space);
    if (bits != 8 || bytesPerRow != width * 4 || info != (2u | 2u << 12))
        return nullptr;
    return sim::create<Bitmap, CGContextRef>(static_cast<std::uint32_t*>(data), width, height);
}
void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
    const auto& bitmap = sim::object<Bitmap>(context);
    if (rect.origin.x != 0 || rect.origin.y != 0 || rect.size.width != static_cast<double>(bitmap.width) ||
        rect.size.height != static_cast<double>(bitmap.height))
        fatal("an image that does not fill its bitmap");
    std::fill_n(bitmap.pixels, bitmap.width * bitmap.height, sim::object<Image>(image).colour);
}

CGRect CGDisplayBounds(CGDirectDisplayID number) {
    for (const auto& display : desk().displays) {
        if (number != 0 && display.number == number) {
            const auto& main = desk().displays.front().frame;
            return CGRectMake(display.frame.origin.x, NSMaxY(main) - NSMaxY(display.frame), display.frame.size.width,
                              display.frame.size.height);
        }
    }
    return CGRectMake(0, 0, 0, 0);
}

@implementation NSScreen
+ (NSArray*)screens {
    std::vector<id> made;
    for (const auto& display : desk().displays) {
        NSScreen* screen = [[[NSScreen alloc] init] autorelease];
        put(screen, "display", display);
        made.push_back(screen);
    }
    return makeArray(made);
}
- (NSRect)frame {
    return value<Display>(self, "display").frame;
}
- (NSDictionary*)deviceDescription {
    const auto number = value<Display>(self, "display").number;
    return makeDictionary({{"NSScreenNumber", number ? (id)makeNumber(number) : (id)makeString("none")}});
}
@end

@implementation NSColorSpace
+ (NSColorSpace*)sRGBColorSpace {
    return sharedObject<NSColorSpace>();
}
@end

NSNotificationName const NSSystemColorsDidChangeNotification = @"NSSystemColorsDidChangeNotification";

@implementation NSColor
+ (NSColor*)clearColor {
    return colour("clear", 0);
}
+ (NSColor*)blackColor {
    return colour("black");
}
+ (NSColor*)labelColor {
    return colour("label");
}
+ (NSColor*)controlAccentColor {
    return colour("controlAccent");
}
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha {
    return colour(value<Colour>(self, "colour").name, alpha);
}
/// A colour of a catalogue has no components of its own.
- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space {
    if (space != [NSColorSpace sRGBColorSpace] || !desk().accentHasComponents)
        return nil;
    return colour("components");
}
- (CGFloat)component:(int)index {
    if (value<Colour>(self, "colour").name != "components")
        fatal("the components of a colour that has none");
    return desk().accent[index];
}
- (CGFloat)redComponent {
    return [self component:0];
}
- (CGFloat)greenComponent {
    return [self component:1];
}
- (CGFloat)blueComponent {
    return [self component:2];
}
/// Lives as long as the colour.
- (CGColorRef)CGColor {
    const auto made = sim::create<ColourObject, CGColorRef>(value<Colour>(self, "colour"));
    put(self, "CGColor", StrongCf(made));
    CFRelease(made);
    return made;
}
@end

const NSFontWeight NSFontWeightSemibold = 0.3;

@implementation NSFont
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    NSFont* made = [[[NSFont alloc] init] autorelease];
    put(made, "size", size);
    put(made, "weight", weight);
    return made;
}
@end

@implementation NSImage
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    NSImage* made = [[[NSImage alloc] init] autorelease];
    put(made, "symbol", std::string([name UTF8String]));
    put(made, "accessibilityDescription", std::string([description UTF8String]));
    return made;
}
/// The image's own.
- (CGImageRef)CGImageForProposedRect:(NSRect*)rect context:(id)context hints:(NSDictionary*)hints {
    if (context || hints)
        fatal("only images for no particular context are simulated");
    if (rect->size.width <= 0)
        return nullptr;
    const auto made = sim::create<Image, CGImageRef>(0xFF204060u);
    put(self, "image", StrongCf(made));
    CFRelease(made);
    return made;
}
RECORDED_VALUE(BOOL, isTemplate, setTemplate)
@end

NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";

@implementation NSAppearance
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray*)names {
    NSString* wanted = desk().dark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua;
    for (NSString* name in names) {
        if ([name isEqualToString:wanted])
            return name;
    }
    return nil;
}
@end
