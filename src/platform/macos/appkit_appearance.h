// Light or dark, the accent colour, and whether things may move.
#pragma once

#import "platform/macos/observation.h"

#include "ports/appearance.h"

@class TarvikThemeObserver;

namespace tarvik {

class AppKitAppearance final : public Appearance {
public:
    AppKitAppearance();
    ~AppKitAppearance() override;
    AppKitAppearance(const AppKitAppearance&) = delete;
    AppKitAppearance& operator=(const AppKitAppearance&) = delete;

    Look look() override;
    void onChange(std::function<void()> handler) override { handler_ = std::move(handler); }

    void changed();

private:
    std::function<void()> handler_;
    Observation colours_;
    Observation motion_;
    ObjcRef<TarvikThemeObserver*> theme_;
};

} // namespace tarvik
