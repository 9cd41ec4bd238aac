#include "support/version_order.h"

#include <algorithm>

namespace tarvik {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// The next number, without leading zeros, or word; empty at the end, and for the number zero.
struct Piece {
    enum class Kind { word, end, number } kind = Kind::end;
    std::string_view text;
};

Piece take(std::string_view& rest) {
    rest.remove_prefix(static_cast<std::size_t>(
        std::find_if(rest.begin(), rest.end(), [](char c) { return isDigit(c) || isLetter(c); }) - rest.begin()));
    if (rest.empty())
        return {};
    const bool number = isDigit(rest.front());
    const auto end = static_cast<std::size_t>(
        std::find_if(rest.begin(), rest.end(), [&](char c) { return number ? !isDigit(c) : !isLetter(c); }) -
        rest.begin());
    auto text = rest.substr(0, end);
    rest.remove_prefix(end);
    if (!number)
        return {Piece::Kind::word, text};
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    // A zero is as good as nothing: 1.0 is 1.
    return {text.empty() ? Piece::Kind::end : Piece::Kind::number, text};
}

} // namespace

std::weak_ordering compareVersions(std::string_view a, std::string_view b) {
    while (!a.empty() || !b.empty()) {
        const auto first = take(a);
        const auto second = take(b);
        if (first.kind != second.kind)
            return first.kind <=> second.kind;
        if (first.kind == Piece::Kind::number && first.text.size() != second.text.size())
            return first.text.size() <=> second.text.size();
        if (const auto order = first.text.compare(second.text); order != 0)
            return order <=> 0;
    }
    return std::weak_ordering::equivalent;
}

} // namespace tarvik
