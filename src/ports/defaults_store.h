// The per-user store of preferences.
#pragma once

#include "support/observers.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// Reads answer nothing when the key is missing or its value cannot be taken as the type; the caller then uses its
/// registered default. Every write reaches the disk before it returns, or is logged as lost. Main thread.
class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;

    virtual std::optional<bool> boolean(std::string_view key) const = 0;
    virtual std::optional<double> number(std::string_view key) const = 0;
    virtual std::optional<std::string> text(std::string_view key) const = 0;
    virtual std::optional<std::vector<std::string>> textList(std::string_view key) const = 0;
    virtual std::optional<std::string> data(std::string_view key) const = 0;

    virtual void setBoolean(std::string_view key, bool value) = 0;
    virtual void setNumber(std::string_view key, double value) = 0;
    virtual void setText(std::string_view key, const std::string& value) = 0;
    virtual void setTextList(std::string_view key, const std::vector<std::string>& value) = 0;
    virtual void setData(std::string_view key, const std::string& value) = 0;

    /// For a value that the caller cannot use and is about to replace: keeps it where the user can find it. Never at
    /// the cost of what was kept before. True when it is kept, or there is none; false, logged, when it would be lost.
    virtual bool setAside(std::string_view key) = 0;

    /// Why what was changed is not on the disk, in words for the user; empty when it is.
    virtual std::string problem() const { return {}; }
    /// Told when that changes.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): who can tell, keeps it
    [[nodiscard]] virtual Subscription observeProblem(std::function<void()>) { return {}; }
};

} // namespace tarvik
