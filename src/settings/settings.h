// The user's preferences and gesture table: loaded once, written at each change, observable.
#pragma once

#include "model/key_names.h"
#include "model/preferences.h"
#include "model/vocabulary.h"
#include "ports/defaults_store.h"
#include "ports/login_item.h"
#include "support/log.h"
#include "support/observers.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// One property.
enum class Setting : std::uint8_t {
    enabled,
    triggerButton,
    showTrail,
    minStroke,
    scrollBinding,
    excludedApps,
    reverseVertical,
    reverseHorizontal,
    dragDelay,
    mappings,
    /// Not stored here: the truth is the system's.
    launchAtLogin,
    /// Whether changes reach the disk; not a setting of the user's.
    storage,
};

/// The key under which a property is stored; not for `launchAtLogin` and `storage`.
std::string_view settingKey(Setting setting);

/// Main thread. Every setter takes effect in memory, tells the observers, then writes; nothing is pending at exit. What
/// the store cannot answer, or answers with an unknown word, falls back to the registered default without a message,
/// and stays stored until the property changes; a table is set aside even then.
class Settings {
public:
    /// Loads everything, and brings a stored table up to date once: gestures that later versions added are entered
    /// unless the user has bound them already.
    /// A login item that cannot be changed is told to `systemLog`.
    Settings(DefaultsStore& store, LoginItem& loginItem, LogSink& systemLog);
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    bool enabled() const { return values_.enabled; }
    TriggerButton triggerButton() const { return values_.triggerButton; }
    bool showTrail() const { return values_.showTrail; }
    double minStroke() const { return values_.minStroke; }
    ScrollBinding scrollBinding() const { return values_.scrollBinding; }
    const std::vector<std::string>& excludedApps() const { return values_.excludedApps; }
    bool reverseVertical() const { return values_.reverseVertical; }
    bool reverseHorizontal() const { return values_.reverseHorizontal; }
    /// Zero for never.
    std::chrono::milliseconds dragDelay() const { return values_.dragDelay; }
    const GestureTable& mappings() const { return mappings_; }
    /// Asked for each time: others change it too.
    bool launchAtLogin() const { return loginItem_.enabled(); }

    void setEnabled(bool on);
    void setTriggerButton(TriggerButton button);
    void setShowTrail(bool on);
    void setMinStroke(double points);
    void setScrollBinding(ScrollBinding binding);
    void setExcludedApps(std::vector<std::string> ids);
    void setReverseVertical(bool on);
    void setReverseHorizontal(bool on);
    /// Brought into the range that is offered.
    void setDragDelay(double milliseconds);
    void setMappings(GestureTable table);
    /// The observers are told also when it failed, so that a switch moves back.
    void setLaunchAtLogin(bool on);

    /// Told after each change of a property.
    [[nodiscard]] Subscription observe(std::function<void(Setting)> observer) {
        return observers_.add(std::move(observer));
    }

    /// Why changes are not on the disk, in words for the user; empty when they are.
    std::string storageProblem() const { return store_.problem(); }

    /// The current values as the engine takes them, each action with its title.
    std::shared_ptr<const Preferences> snapshot(const Vocabulary& vocabulary, const KeyNames& keyNames) const;

private:
    void load();
    void loadMappings();
    void addOnce(std::string_view marker, const char* gesture, ActionKind kind);
    void saveMappings();
    void setFlag(Setting setting, bool Preferences::*member, bool on);

    DefaultsStore& store_;
    LoginItem& loginItem_;
    LogSink& systemLog_;
    /// Everything but the table.
    Preferences values_;
    GestureTable mappings_;
    /// What is stored as the table may be written over.
    bool tableIsOurs_ = false;
    Observers<Setting> observers_;
    Subscription storage_;
};

} // namespace tarvik
