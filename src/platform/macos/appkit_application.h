// The application object: an agent without a Dock icon that is told when the user opens it once more.
#pragma once

#import "platform/macos/objc_ref.h"

#include "ports/activation.h"

#include <functional>

@class TarvikApplicationDelegate;

namespace tarvik {

/// To be made before the toolkit's application object, which passes on what it is told to the delegate that it finds.
/// Main thread.
class AppKitApplication final : public Activation {
public:
    AppKitApplication();
    ~AppKitApplication() override;
    AppKitApplication(const AppKitApplication&) = delete;
    AppKitApplication& operator=(const AppKitApplication&) = delete;

    /// No Dock icon and no menu bar of its own. To be called once the toolkit's application object exists, which has
    /// ideas of its own.
    void becomeAgent();
    void activate() override;
    /// Called when the user opens the program that runs already. Replaces an earlier handler.
    void onReopen(std::function<void()> handler) { reopened_ = std::move(handler); }
    /// Ends the program as the menu item of every application does.
    void terminate();

    void reopen();

private:
    std::function<void()> reopened_;
    ObjcRef<TarvikApplicationDelegate*> delegate_;
};

} // namespace tarvik
