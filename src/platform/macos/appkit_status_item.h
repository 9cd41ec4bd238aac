// The item in the menu bar.
#pragma once

#import "platform/macos/objc_ref.h"

#include "ports/status_item.h"

#import <AppKit/AppKit.h>

@class TarvikStatusMenu;

namespace tarvik {

class AppKitStatusItem final : public StatusItem {
public:
    AppKitStatusItem();
    ~AppKitStatusItem() override;
    AppKitStatusItem(const AppKitStatusItem&) = delete;
    AppKitStatusItem& operator=(const AppKitStatusItem&) = delete;

    void setIcon(StatusIcon icon, std::string_view description, bool appearsDisabled) override;
    void setMenu(std::function<std::vector<MenuItem>()> build) override;

    /// The menu opens: it gets the items that there are to be now.
    void fill(NSMenu* menu);
    void choose(std::size_t item);

private:
    std::function<std::vector<MenuItem>()> build_;
    /// What the menu shows.
    std::vector<MenuItem> items_;
    ObjcRef<TarvikStatusMenu*> delegate_;
    ObjcRef<NSStatusItem*> item_;
};

} // namespace tarvik
