#pragma once

#include "ports/defaults_store.h"

#include <functional>
#include <map>
#include <variant>

namespace tarvik {

/// Values in memory, by type: a value of another type reads as missing.
class FakeDefaultsStore final : public DefaultsStore {
public:
    struct Data {
        std::string bytes;
        friend bool operator==(const Data&, const Data&) = default;
    };
    using Value = std::variant<bool, double, std::string, std::vector<std::string>, Data>;
    std::map<std::string, Value, std::less<>> values;
    std::vector<std::string> writes;

    std::optional<bool> boolean(std::string_view key) const override { return get<bool>(key); }
    std::optional<double> number(std::string_view key) const override { return get<double>(key); }
    std::optional<std::string> text(std::string_view key) const override { return get<std::string>(key); }
    std::optional<std::vector<std::string>> textList(std::string_view key) const override {
        return get<std::vector<std::string>>(key);
    }
    std::optional<std::string> data(std::string_view key) const override {
        const auto value = get<Data>(key);
        return value ? std::optional(value->bytes) : std::nullopt;
    }

    void setBoolean(std::string_view key, bool value) override { put(key, value); }
    void setNumber(std::string_view key, double value) override { put(key, value); }
    void setText(std::string_view key, const std::string& value) override { put(key, value); }
    void setTextList(std::string_view key, const std::vector<std::string>& value) override { put(key, value); }
    void setData(std::string_view key, const std::string& value) override { put(key, Data{value}); }

    bool refuseSetAside = false;
    std::vector<Value> aside;
    bool setAside(std::string_view key) override {
        if (const auto found = values.find(key); found != values.end() && !refuseSetAside)
            aside.push_back(found->second);
        return !refuseSetAside;
    }

private:
    template <class T> std::optional<T> get(std::string_view key) const {
        const auto found = values.find(key);
        if (found == values.end() || !std::holds_alternative<T>(found->second))
            return std::nullopt;
        return std::get<T>(found->second);
    }
    void put(std::string_view key, Value value) {
        writes.emplace_back(key);
        values.insert_or_assign(std::string(key), std::move(value));
    }
};

} // namespace tarvik
