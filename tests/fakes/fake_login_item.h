#pragma once

#include "fakes/recording_log.h"
#include "ports/login_item.h"
#include "settings/settings.h"

#include <utility>

namespace tarvik {

class FakeLoginItem final : public LoginItem {
public:
    bool on = false;
    /// The words with which the next changes are refused.
    std::optional<std::string> refusal;

    bool enabled() const override { return on; }
    std::optional<std::string> setEnabled(bool wanted) override {
        if (!refusal)
            on = wanted;
        return refusal;
    }
};

/// For tests that have nothing to do with login items.
inline Settings settingsOver(DefaultsStore& store) {
    static FakeLoginItem item;
    static RecordingLog systemLog;
    return Settings(store, item, systemLog);
}

} // namespace tarvik
