// The menu bar.
#include "macos/appkit/recorder/desk.h"

#include <objc/message.h>

#include <algorithm>

namespace tarvik::recorder {

NSArray<NSMenuItem*>* openMenu(NSStatusItem* item) {
    NSMenu* menu = [item menu];
    [[menu delegate] menuNeedsUpdate:menu];
    return [menu itemArray];
}

void choose(NSMenuItem* item) {
    id target = [item target];
    if (![item isEnabled] || !target || ![target respondsToSelector:[item action]])
        fatal("an item is chosen that cannot be");
    reinterpret_cast<void (*)(id, SEL, id)>(objc_msg_lookup(target, [item action]))(target, [item action], item);
}

} // namespace tarvik::recorder

using namespace tarvik::recorder;

@implementation NSMenuItem
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)keyEquivalent {
    [self setTitle:title];
    [self setAction:action];
    [self setKeyEquivalent:keyEquivalent];
    [self setEnabled:YES];
    return self;
}
+ (NSMenuItem*)separatorItem {
    NSMenuItem* made = [[[NSMenuItem alloc] initWithTitle:@"" action:nullptr keyEquivalent:@""] autorelease];
    put(made, "separator", BOOL(YES));
    return made;
}
- (BOOL)isSeparatorItem {
    return value<BOOL>(self, "separator");
}
RECORDED_STRONG(NSString*, title, setTitle)
RECORDED_STRONG(NSString*, keyEquivalent, setKeyEquivalent)
RECORDED_VALUE(id, target, setTarget)
RECORDED_VALUE(SEL, action, setAction)
RECORDED_VALUE(NSInteger, tag, setTag)
RECORDED_VALUE(NSControlStateValue, state, setState)
RECORDED_VALUE(BOOL, isEnabled, setEnabled)
@end

@implementation NSMenu
- (NSArray*)itemArray {
    std::vector<id> items;
    for (const auto& item : value<std::vector<Strong>>(self, "items"))
        items.push_back(item.get());
    return makeArray(items);
}
- (void)addItem:(NSMenuItem*)item {
    auto items = value<std::vector<Strong>>(self, "items");
    items.emplace_back(item);
    put(self, "items", std::move(items));
}
- (void)removeAllItems {
    put(self, "items", std::vector<Strong>());
}
RECORDED_VALUE(id, delegate, setDelegate)
@end

@implementation NSStatusBarButton
RECORDED_STRONG(NSImage*, image, setImage)
RECORDED_VALUE(BOOL, appearsDisabled, setAppearsDisabled)
@end

@implementation NSStatusItem
- (NSStatusBarButton*)button {
    return (NSStatusBarButton*)value<Strong>(self, "button").get();
}
RECORDED_STRONG(NSMenu*, menu, setMenu)
RECORDED_VALUE(CGFloat, length, setLength)
@end

@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
    return sharedObject<NSStatusBar>();
}
/// The bar does not hold its items.
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    NSStatusItem* made = [[[NSStatusItem alloc] init] autorelease];
    [made setLength:length];
    put(made, "button", Strong([[[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, 22, 22)] autorelease]));
    desk().statusItems.push_back(made);
    return made;
}
- (void)removeStatusItem:(NSStatusItem*)item {
    if (std::erase(desk().statusItems, item) != 1)
        fatal("a status item is removed that is not there");
}
@end
