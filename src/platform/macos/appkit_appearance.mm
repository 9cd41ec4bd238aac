#import "platform/macos/appkit_appearance.h"

#import <AppKit/AppKit.h>

#include <cmath>

@interface TarvikThemeObserver : NSObject {
@public
    tarvik::AppKitAppearance* owner_;
}
@end

@implementation TarvikThemeObserver
- (void)observeValueForKeyPath:(NSString*)path ofObject:(id)object change:(NSDictionary*)change context:(void*)context {
    (void)path;
    (void)object;
    (void)change;
    (void)context;
    owner_->changed();
}
@end

namespace tarvik {
namespace {

NSString* const themeKey = @"effectiveAppearance";

bool isDark() {
    NSArray* known = [NSArray arrayWithObjects:NSAppearanceNameAqua, NSAppearanceNameDarkAqua, nil];
    NSString* name = [[NSApp effectiveAppearance] bestMatchFromAppearancesWithNames:known];
    return [name isEqualToString:NSAppearanceNameDarkAqua];
}

std::uint32_t channel(CGFloat value) {
    return static_cast<std::uint32_t>(std::lround(std::fmin(std::fmax(value, 0), 1) * 255));
}

} // namespace

AppKitAppearance::AppKitAppearance()
    : colours_([NSNotificationCenter defaultCenter], NSSystemColorsDidChangeNotification, [this] { changed(); })
    , motion_([[NSWorkspace sharedWorkspace] notificationCenter],
              NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, [this] { changed(); })
    , theme_(ObjcRef<TarvikThemeObserver*>::adopt([[TarvikThemeObserver alloc] init])) {
    static_cast<TarvikThemeObserver*>(theme_)->owner_ = this;
    [[NSApplication sharedApplication] addObserver:theme_ forKeyPath:themeKey options:0 context:nullptr];
}

AppKitAppearance::~AppKitAppearance() { [NSApp removeObserver:theme_ forKeyPath:themeKey]; }

Look AppKitAppearance::look() {
    @autoreleasepool {
        Look look;
        look.dark = isDark();
        look.reducedMotion = [[NSWorkspace sharedWorkspace] accessibilityDisplayShouldReduceMotion];
        // nil when the colour cannot be said in that space.
        if (NSColor* accent = [[NSColor controlAccentColor] colorUsingColorSpace:[NSColorSpace sRGBColorSpace]]) {
            look.accent = channel([accent redComponent]) << 16 | channel([accent greenComponent]) << 8 |
                          channel([accent blueComponent]);
        }
        return look;
    }
}

void AppKitAppearance::changed() {
    if (handler_)
        handler_();
}

} // namespace tarvik
