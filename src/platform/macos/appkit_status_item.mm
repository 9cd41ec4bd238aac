#import "platform/macos/appkit_status_item.h"

#import "platform/macos/ns_text.h"

#include <utility>

/// The menu's delegate and the target of its items.
@interface TarvikStatusMenu : NSObject <NSMenuDelegate> {
@public
    tarvik::AppKitStatusItem* owner_;
}
- (void)choose:(NSMenuItem*)item;
@end

@implementation TarvikStatusMenu
- (void)menuNeedsUpdate:(NSMenu*)menu {
    owner_->fill(menu);
}
- (void)choose:(NSMenuItem*)item {
    owner_->choose(static_cast<std::size_t>([item tag]));
}
@end

namespace tarvik {
namespace {

NSString* symbol(StatusIcon icon) { return icon == StatusIcon::handDraw ? @"hand.draw" : @"hand.raised.slash"; }

/// Autoreleased. Key equivalents have the menu's own modifier, Command.
NSMenuItem* menuItem(const MenuItem& item, NSInteger tag, TarvikStatusMenu* target) {
    if (item.isSeparator())
        return [NSMenuItem separatorItem];
    NSString* key = item.keyEquivalent ? nsString({&item.keyEquivalent, 1}) : @"";
    const bool usable = item.enabled && item.action;
    NSMenuItem* made = [[[NSMenuItem alloc] initWithTitle:nsString(item.title)
                                                   action:usable ? @selector(choose:) : nullptr
                                            keyEquivalent:key] autorelease];
    [made setTarget:usable ? target : nil];
    [made setEnabled:usable];
    [made setTag:tag];
    [made setState:item.checked.value_or(false) ? NSControlStateValueOn : NSControlStateValueOff];
    return made;
}

} // namespace

AppKitStatusItem::AppKitStatusItem()
    : delegate_(ObjcRef<TarvikStatusMenu*>::adopt([[TarvikStatusMenu alloc] init]))
    , item_(ObjcRef<NSStatusItem*>::retain(
          [[NSStatusBar systemStatusBar] statusItemWithLength:NSSquareStatusItemLength])) {
    static_cast<TarvikStatusMenu*>(delegate_)->owner_ = this;
    const auto menu = ObjcRef<NSMenu*>::adopt([[NSMenu alloc] init]);
    [menu setDelegate:delegate_];
    [item_ setMenu:menu];
}

/// The menu does not hold its delegate, so it must be gone, or know of none, before the delegate is.
AppKitStatusItem::~AppKitStatusItem() {
    [[item_ menu] setDelegate:nil];
    [[NSStatusBar systemStatusBar] removeStatusItem:item_];
}

void AppKitStatusItem::setIcon(StatusIcon icon, std::string_view description, bool appearsDisabled) {
    @autoreleasepool {
        NSImage* image = [NSImage imageWithSystemSymbolName:symbol(icon)
                                   accessibilityDescription:nsString(description)];
        [image setTemplate:YES];
        [[item_ button] setImage:image];
        [[item_ button] setAppearsDisabled:appearsDisabled];
    }
}

void AppKitStatusItem::setMenu(std::function<std::vector<MenuItem>()> build) { build_ = std::move(build); }

void AppKitStatusItem::fill(NSMenu* menu) {
    items_ = build_ ? build_() : std::vector<MenuItem>();
    [menu removeAllItems];
    for (std::size_t i = 0; i < items_.size(); ++i)
        [menu addItem:menuItem(items_[i], static_cast<NSInteger>(i), delegate_)];
}

void AppKitStatusItem::choose(std::size_t item) {
    if (item >= items_.size())
        return;
    // A copy: what the action does may fill the menu anew.
    const auto action = items_[item].action;
    action();
}

} // namespace tarvik
