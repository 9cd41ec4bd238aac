#import "platform/macos/appkit_trail_panels.h"

#import "platform/macos/cf_ref.h"
#import "platform/macos/ns_text.h"
#import "platform/macos/objc_ref.h"

#include "overlay/trail_geometry.h"
#include "overlay/trail_style.h"

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

namespace tarvik {
namespace {

/// A rectangle whose origin is at the top left of a space of that height, as the window system has it: its origin is at
/// the bottom left.
NSRect flipped(const Rect& r, double height) { return NSMakeRect(r.x, height - r.maxY(), r.width, r.height); }

/// Where the main display, at whose bottom left the window system's space begins, ends at the top.
double mainDisplayTop() { return NSMaxY([[[NSScreen screens] firstObject] frame]); }

constexpr NSWindowCollectionBehavior everywhere =
    NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorStationary |
    NSWindowCollectionBehaviorIgnoresCycle | NSWindowCollectionBehaviorFullScreenAuxiliary;

ObjcRef<NSPanel*> makePanel(NSRect frame) {
    auto panel = ObjcRef<NSPanel*>::adopt([[NSPanel alloc] initWithContentRect:frame
                                                                     styleMask:NSWindowStyleMaskNonactivatingPanel
                                                                       backing:NSBackingStoreBuffered
                                                                         defer:NO]);
    [panel setOpaque:NO];
    [panel setBackgroundColor:[NSColor clearColor]];
    [panel setHasShadow:NO];
    [panel setIgnoresMouseEvents:YES];
    [panel setLevel:NSScreenSaverWindowLevel];
    [panel setCollectionBehavior:everywhere];
    // A panel's default is to show only while its application is active, which an agent hardly ever is.
    [panel setHidesOnDeactivate:NO];
    // The window system may have moved it on to another display.
    [panel setFrame:frame display:NO];
    return panel;
}

ObjcRef<CAShapeLayer*> makeShape(double scale) {
    auto shape = ObjcRef<CAShapeLayer*>::retain([CAShapeLayer layer]);
    [shape setFillColor:nullptr];
    [shape setStrokeColor:[[[NSColor controlAccentColor] colorWithAlphaComponent:trailStyle::lineOpacity] CGColor]];
    [shape setLineWidth:trailStyle::lineWidth];
    [shape setLineCap:kCALineCapRound];
    [shape setLineJoin:kCALineJoinRound];
    [shape setShadowColor:[[NSColor blackColor] CGColor]];
    [shape setShadowOpacity:static_cast<float>(trailStyle::shadowOpacity)];
    [shape setShadowRadius:trailStyle::shadowRadius];
    [shape setShadowOffset:CGSizeMake(0, 0)];
    [shape setContentsScale:scale];
    return shape;
}

ObjcRef<NSVisualEffectView*> makePill() {
    auto pill = ObjcRef<NSVisualEffectView*>::adopt([[NSVisualEffectView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)]);
    [pill setMaterial:NSVisualEffectMaterialHUDWindow];
    [pill setBlendingMode:NSVisualEffectBlendingModeBehindWindow];
    [pill setState:NSVisualEffectStateActive];
    [pill setWantsLayer:YES];
    [[pill layer] setCornerRadius:trailStyle::pillRadius];
    [pill setHidden:YES];
    return pill;
}

ObjcRef<NSTextField*> makeText() {
    auto text = ObjcRef<NSTextField*>::retain([NSTextField labelWithString:@""]);
    [text setFont:[NSFont systemFontOfSize:trailStyle::fontSize weight:NSFontWeightSemibold]];
    [text setTextColor:[NSColor labelColor]];
    return text;
}

class AppKitTrailPanel final : public TrailPanel {
public:
    explicit AppKitTrailPanel(const Screen& screen);
    ~AppKitTrailPanel() override { hide(); }
    AppKitTrailPanel(const AppKitTrailPanel&) = delete;
    AppKitTrailPanel& operator=(const AppKitTrailPanel&) = delete;

    void draw(const PathView& points, const std::optional<std::string>& label, Point head) override;
    void show() override { [panel_ orderFrontRegardless]; }
    void hide() override { [panel_ orderOut:nil]; }
    bool visible() const override { return [panel_ isVisible]; }

private:
    void drawPath(const PathView& points);
    void placePill(const std::string& label, Point head);

    const Rect frame_;
    ObjcRef<NSPanel*> panel_;
    ObjcRef<CAShapeLayer*> shape_;
    ObjcRef<NSVisualEffectView*> pill_;
    ObjcRef<NSTextField*> text_;
};

AppKitTrailPanel::AppKitTrailPanel(const Screen& screen)
    : frame_(screen.frame)
    , panel_(makePanel(flipped(screen.frame, mainDisplayTop())))
    , shape_(makeShape([panel_ backingScaleFactor]))
    , pill_(makePill())
    , text_(makeText()) {
    const auto content = ObjcRef<NSView*>::adopt(
        [[NSView alloc] initWithFrame:NSMakeRect(0, 0, screen.frame.width, screen.frame.height)]);
    [content setWantsLayer:YES];
    [[content layer] addSublayer:shape_];
    [pill_ addSubview:text_];
    [content addSubview:pill_];
    [panel_ setContentView:content];
}

void AppKitTrailPanel::draw(const PathView& points, const std::optional<std::string>& label, Point head) {
    @autoreleasepool {
        drawPath(points);
        if (label)
            placePill(*label, {head.x - frame_.x, head.y - frame_.y});
        [pill_ setHidden:!label];
    }
}

void AppKitTrailPanel::drawPath(const PathView& points) {
    const auto path = CfRef<CGMutablePathRef>::adopt(CGPathCreateMutable());
    for (std::size_t i = 0; i < points.count; ++i) {
        const double x = points[i].x - frame_.x;
        const double y = frame_.maxY() - points[i].y;
        if (i == 0)
            CGPathMoveToPoint(path.get(), nullptr, x, y);
        else
            CGPathAddLineToPoint(path.get(), nullptr, x, y);
    }
    // Layers move to what they are told in a quarter of a second, unless they are told not to.
    [CATransaction begin];
    [CATransaction setDisableActions:YES];
    [shape_ setPath:path.get()];
    [CATransaction commit];
}

/// `head` from the top left of the panel.
void AppKitTrailPanel::placePill(const std::string& label, Point head) {
    [text_ setStringValue:nsString(label)];
    [text_ sizeToFit];
    const auto textSize = [text_ frame].size;
    const auto size = pillSize({textSize.width, textSize.height});
    const auto origin = pillTextOrigin();
    [text_ setFrameOrigin:NSMakePoint(origin.x, size.height - origin.y - textSize.height)];
    [pill_ setFrame:flipped(pillFrame(size, head, {frame_.width, frame_.height}), frame_.height)];
}

} // namespace

std::unique_ptr<TrailPanel> AppKitTrailPanels::make(const Screen& screen) {
    @autoreleasepool {
        return std::make_unique<AppKitTrailPanel>(screen);
    }
}

} // namespace tarvik
