#include "settings/settings.h"

#include "model/gesture_table_json.h"

#include <array>
#include <cstddef>
#include <utility>

namespace tarvik {

std::string_view settingKey(Setting setting) {
    static constexpr std::array<std::string_view, 10> keys = {
        "enabled",      "triggerButton",   "showTrail",         "minStroke", "scrollBinding",
        "excludedApps", "reverseVertical", "reverseHorizontal", "dragDelay", "mappings",
    };
    return keys[static_cast<std::size_t>(setting)];
}

Settings::Settings(DefaultsStore& store, LoginItem& loginItem, LogSink& systemLog)
    : store_(store)
    , loginItem_(loginItem)
    , systemLog_(systemLog)
    , storage_(store.observeProblem([this] { observers_.notify(Setting::storage); })) {
    load();
    loadMappings();
}

void Settings::load() {
    const Preferences defaults;
    const auto flag = [this](Setting setting, bool fallback) {
        return store_.boolean(settingKey(setting)).value_or(fallback);
    };
    const auto word = [this](Setting setting) { return store_.text(settingKey(setting)).value_or(""); };

    values_.enabled = flag(Setting::enabled, defaults.enabled);
    values_.triggerButton = triggerButtonFromRawValue(word(Setting::triggerButton)).value_or(defaults.triggerButton);
    values_.showTrail = flag(Setting::showTrail, defaults.showTrail);
    values_.minStroke = store_.number(settingKey(Setting::minStroke)).value_or(defaults.minStroke);
    values_.scrollBinding = scrollBindingFromRawValue(word(Setting::scrollBinding)).value_or(defaults.scrollBinding);
    values_.reverseVertical = flag(Setting::reverseVertical, defaults.reverseVertical);
    values_.reverseHorizontal = flag(Setting::reverseHorizontal, defaults.reverseHorizontal);
    values_.dragDelay = dragDelayFrom(store_.number(settingKey(Setting::dragDelay)).value_or(0));
    values_.excludedApps = store_.textList(settingKey(Setting::excludedApps)).value_or(defaults.excludedApps);
}

void Settings::loadMappings() {
    const auto data = store_.data(settingKey(Setting::mappings));
    auto table = data ? decodeGestureTable(*data) : std::nullopt;
    if (!table) {
        mappings_ = defaultMappings();
        return;
    }
    mappings_ = *std::move(table);
    tableIsOurs_ = true;
    addOnce("addedExitFullScreen", "LD", ActionKind::exitFullScreen);
    addOnce("addedEnterFullScreen", "RD", ActionKind::enterFullScreen);
}

void Settings::addOnce(std::string_view marker, const char* gesture, ActionKind kind) {
    if (store_.boolean(marker).value_or(false))
        return;
    // Before the table is looked at: whoever deletes the gesture later does not get it back.
    store_.setBoolean(marker, true);
    if (mappings_.try_emplace(gesture, GestureAction{kind, {}}).second)
        saveMappings();
}

void Settings::saveMappings() {
    const auto json = encodeGestureTable(mappings_);
    if (!json)
        return;
    tableIsOurs_ = tableIsOurs_ || store_.setAside(settingKey(Setting::mappings));
    if (tableIsOurs_)
        store_.setData(settingKey(Setting::mappings), *json);
}

void Settings::setFlag(Setting setting, bool Preferences::*member, bool on) {
    values_.*member = on;
    observers_.notify(setting);
    store_.setBoolean(settingKey(setting), on);
}

void Settings::setEnabled(bool on) { setFlag(Setting::enabled, &Preferences::enabled, on); }
void Settings::setShowTrail(bool on) { setFlag(Setting::showTrail, &Preferences::showTrail, on); }
void Settings::setReverseVertical(bool on) { setFlag(Setting::reverseVertical, &Preferences::reverseVertical, on); }
void Settings::setReverseHorizontal(bool on) {
    setFlag(Setting::reverseHorizontal, &Preferences::reverseHorizontal, on);
}

void Settings::setTriggerButton(TriggerButton button) {
    values_.triggerButton = button;
    observers_.notify(Setting::triggerButton);
    store_.setText(settingKey(Setting::triggerButton), std::string(rawValue(button)));
}

void Settings::setMinStroke(double points) {
    values_.minStroke = points;
    observers_.notify(Setting::minStroke);
    store_.setNumber(settingKey(Setting::minStroke), points);
}

void Settings::setScrollBinding(ScrollBinding binding) {
    values_.scrollBinding = binding;
    observers_.notify(Setting::scrollBinding);
    store_.setText(settingKey(Setting::scrollBinding), std::string(rawValue(binding)));
}

void Settings::setExcludedApps(std::vector<std::string> ids) {
    values_.excludedApps = std::move(ids);
    observers_.notify(Setting::excludedApps);
    store_.setTextList(settingKey(Setting::excludedApps), values_.excludedApps);
}

void Settings::setDragDelay(double milliseconds) {
    values_.dragDelay = dragDelayFrom(milliseconds);
    observers_.notify(Setting::dragDelay);
    store_.setNumber(settingKey(Setting::dragDelay), static_cast<double>(values_.dragDelay.count()));
}

void Settings::setMappings(GestureTable table) {
    mappings_ = std::move(table);
    observers_.notify(Setting::mappings);
    saveMappings();
}

void Settings::setLaunchAtLogin(bool on) {
    if (const auto error = loginItem_.setEnabled(on))
        systemLog_.write("Tarvik: launch-at-login change failed: " + *error);
    observers_.notify(Setting::launchAtLogin);
}

std::shared_ptr<const Preferences> Settings::snapshot(const Vocabulary& vocabulary, const KeyNames& keyNames) const {
    auto preferences = std::make_shared<Preferences>(values_);
    for (const auto& [gesture, action] : mappings_)
        preferences->mappings.emplace(gesture, BoundAction{action, Gesture::title(action, vocabulary, keyNames)});
    return preferences;
}

} // namespace tarvik
