#include "model/gesture_table_json.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

namespace tarvik {
namespace {

using Json = nlohmann::json;

template <class Integer> std::optional<Integer> unsignedMember(const Json& object, const char* name) {
    const auto member = object.find(name);
    if (member == object.end() || !member->is_number_unsigned())
        return std::nullopt;
    const auto value = member->get<std::uint64_t>();
    if (value > std::numeric_limits<Integer>::max())
        return std::nullopt;
    return static_cast<Integer>(value);
}

std::optional<KeyShortcut> decodeShortcut(const Json& json) {
    if (!json.is_object())
        return std::nullopt;
    const auto keyCode = unsignedMember<std::uint16_t>(json, "keyCode");
    const auto modifiers = unsignedMember<std::uint64_t>(json, "modifiers");
    if (!keyCode || !modifiers)
        return std::nullopt;
    return KeyShortcut{*keyCode, *modifiers};
}

std::optional<GestureAction> decodeAction(const Json& json) {
    if (!json.is_object())
        return std::nullopt;
    const auto kindMember = json.find("kind");
    if (kindMember == json.end() || !kindMember->is_string())
        return std::nullopt;
    const auto kind = actionKindFromRawValue(kindMember->get_ref<const std::string&>());
    if (!kind)
        return std::nullopt;
    GestureAction action{*kind, {}};
    if (const auto custom = json.find("custom"); custom != json.end() && !custom->is_null()) {
        action.custom = decodeShortcut(*custom);
        if (!action.custom)
            return std::nullopt;
    }
    return action;
}

} // namespace

std::optional<std::string> encodeGestureTable(const GestureTable& table) {
    auto json = Json::object();
    for (const auto& [gesture, action] : table) {
        auto& entry = json[gesture];
        entry["kind"] = rawValue(action.kind);
        if (action.custom)
            entry["custom"] = {{"keyCode", action.custom->keyCode}, {"modifiers", action.custom->modifiers}};
    }
    try {
        return json.dump();
    } catch (const Json::type_error&) {
        return std::nullopt;
    }
}

std::optional<GestureTable> decodeGestureTable(std::string_view text) {
    const auto json = Json::parse(text, nullptr, /*allow_exceptions=*/false);
    if (!json.is_object())
        return std::nullopt;
    GestureTable table;
    for (const auto& [gesture, entry] : json.items()) {
        const auto action = decodeAction(entry);
        if (!action)
            return std::nullopt;
        table.emplace(gesture, *action);
    }
    return table;
}

} // namespace tarvik
