// Layers, views and windows.
#include "macos/appkit/recorder/desk.h"

using namespace tarvik;
using namespace tarvik::recorder;

extern "C" CGPathRef CGPathCreateCopy(CGPathRef path);

CAShapeLayerLineCap const kCALineCapRound = @"round";
CAShapeLayerLineJoin const kCALineJoinRound = @"round";

namespace {

/// Adds to a list of what an object holds.
void append(id object, const char* key, id element) {
    auto elements = value<std::vector<Strong>>(object, key);
    elements.emplace_back(element);
    put(object, key, std::move(elements));
}

} // namespace

@implementation CALayer
+ (instancetype)layer {
    return [[[self alloc] init] autorelease];
}
- (void)addSublayer:(CALayer*)layer {
    append(self, "sublayers", layer);
}
RECORDED_VALUE(CGFloat, cornerRadius, setCornerRadius)
RECORDED_VALUE(CGFloat, contentsScale, setContentsScale)
RECORDED_CF(CGColorRef, shadowColor, setShadowColor)
RECORDED_VALUE(float, shadowOpacity, setShadowOpacity)
RECORDED_VALUE(CGFloat, shadowRadius, setShadowRadius)
RECORDED_VALUE(CGSize, shadowOffset, setShadowOffset)
@end

@implementation CAShapeLayer
/// The defaults that a trail must not have.
- (instancetype)init {
    [self setFillColor:[[NSColor blackColor] CGColor]];
    put(self, "shadowOffset", CGSizeMake(0, -3));
    return self;
}
- (CGPathRef)path {
    return static_cast<CGPathRef>(value<StrongCf>(self, "path").get());
}
- (void)setPath:(CGPathRef)path {
    calls().push_back("path");
    const auto copy = CGPathCreateCopy(path);
    put(self, "path", StrongCf(copy));
    CFRelease(copy);
}
RECORDED_CF(CGColorRef, fillColor, setFillColor)
RECORDED_CF(CGColorRef, strokeColor, setStrokeColor)
RECORDED_VALUE(CGFloat, lineWidth, setLineWidth)
RECORDED_STRONG(NSString*, lineCap, setLineCap)
RECORDED_STRONG(NSString*, lineJoin, setLineJoin)
@end

@implementation CATransaction
+ (void)begin {
    calls().push_back("begin");
}
+ (void)commit {
    calls().push_back("commit");
}
+ (void)setDisableActions:(BOOL)flag {
    calls().push_back(flag ? "disable actions" : "enable actions");
}
@end

@implementation NSView
- (instancetype)initWithFrame:(NSRect)frame {
    [self setFrame:frame];
    return self;
}
- (void)addSubview:(NSView*)view {
    append(self, "subviews", view);
}
- (void)setFrameOrigin:(NSPoint)origin {
    [self setFrame:{origin, [self frame].size}];
}
/// Views have a layer from when they want one.
- (void)setWantsLayer:(BOOL)flag {
    put(self, "wantsLayer", flag);
    [self setLayer:[CALayer layer]];
}
- (BOOL)wantsLayer {
    return value<BOOL>(self, "wantsLayer");
}
RECORDED_VALUE(NSRect, frame, setFrame)
RECORDED_VALUE(BOOL, isHidden, setHidden)
RECORDED_STRONG(CALayer*, layer, setLayer)
@end

@implementation NSVisualEffectView
RECORDED_VALUE(NSVisualEffectMaterial, material, setMaterial)
RECORDED_VALUE(NSVisualEffectState, state, setState)
- (NSVisualEffectBlendingMode)blendingMode {
    return value<NSVisualEffectBlendingMode>(self, "blendingMode");
}
- (void)setBlendingMode:(NSVisualEffectBlendingMode)mode {
    calls().push_back("blending mode");
    put(self, "blendingMode", mode);
}
@end

@implementation NSTextField
+ (instancetype)labelWithString:(NSString*)string {
    NSTextField* made = [[[self alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)] autorelease];
    [made setStringValue:string];
    return made;
}
/// Every character is 8 points wide; a line 18 high.
- (void)sizeToFit {
    const auto characters = sim::utf16([[self stringValue] UTF8String]).size();
    [self setFrame:{[self frame].origin, {8.0 * static_cast<double>(characters), 18}}];
}
RECORDED_STRONG(NSString*, stringValue, setStringValue)
RECORDED_STRONG(NSFont*, font, setFont)
RECORDED_STRONG(NSColor*, textColor, setTextColor)
@end

@implementation NSWindow
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag {
    if (backing != NSBackingStoreBuffered || flag)
        fatal("a window without its own buffer");
    put(self, "styleMask", style);
    put(self, "contentRect", contentRect);
    // The defaults, and a window system that moves a new window.
    put(self, "isOpaque", BOOL(YES));
    put(self, "hasShadow", BOOL(YES));
    put(self, "hidesOnDeactivate", BOOL([self isKindOfClass:[NSPanel class]]));
    put(self, "frame", NSMakeRect(0, 0, contentRect.size.width, contentRect.size.height));
    return self;
}
- (NSRect)frame {
    return value<NSRect>(self, "frame");
}
- (void)setFrame:(NSRect)frame display:(BOOL)display {
    put(self, "frame", frame);
    put(self, "displayed", display);
}
- (CGFloat)backingScaleFactor {
    const auto frame = [self frame];
    for (const auto& screen : desk().displays) {
        if (screen.frame.origin.x == frame.origin.x && screen.frame.origin.y == frame.origin.y)
            return screen.scale;
    }
    return 1;
}
- (NSWindowStyleMask)styleMask {
    return value<NSWindowStyleMask>(self, "styleMask");
}
- (BOOL)isVisible {
    return value<BOOL>(self, "visible");
}
- (void)orderFrontRegardless {
    put(self, "visible", BOOL(YES));
}
- (void)orderOut:(id)sender {
    (void)sender;
    put(self, "visible", BOOL(NO));
}
/// The window system goes on showing a window that nobody takes away.
- (void)dealloc {
    if ([self isVisible])
        fatal("a window that is gone while it is visible");
    [super dealloc];
}
RECORDED_VALUE(BOOL, isOpaque, setOpaque)
RECORDED_STRONG(NSColor*, backgroundColor, setBackgroundColor)
RECORDED_VALUE(BOOL, hasShadow, setHasShadow)
RECORDED_VALUE(BOOL, ignoresMouseEvents, setIgnoresMouseEvents)
RECORDED_VALUE(NSWindowLevel, level, setLevel)
RECORDED_VALUE(NSWindowCollectionBehavior, collectionBehavior, setCollectionBehavior)
RECORDED_VALUE(BOOL, hidesOnDeactivate, setHidesOnDeactivate)
RECORDED_STRONG(NSView*, contentView, setContentView)
@end

@implementation NSPanel
@end
