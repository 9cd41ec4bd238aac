#include "platform/linux/common/ini_text.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tarvik {
namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::optional<std::string_view> headerName(std::string_view line) {
    line = trimmed(line);
    if (line.size() < 2 || line.front() != '[' || line.back() != ']')
        return std::nullopt;
    return trimmed(line.substr(1, line.size() - 2));
}

std::optional<char> byteFromHex(std::string_view digits) {
    unsigned value = 0;
    const auto* end = digits.data() + digits.size();
    if (digits.size() != 2 || std::from_chars(digits.data(), end, value, 16).ptr != end)
        return std::nullopt;
    return static_cast<char>(value);
}

/// Takes the character after a backslash, with its digits, from the front of the text.
std::optional<char> takeEscape(std::string_view& rest) {
    if (rest.empty())
        return std::nullopt;
    const char sign = rest.front();
    rest.remove_prefix(1);
    switch (sign) {
    case '"':
    case '\\':
        return sign;
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'x': {
        const auto byte = byteFromHex(rest.substr(0, 2));
        rest.remove_prefix(byte ? 2 : 0);
        return byte;
    }
    default:
        return std::nullopt;
    }
}

/// Takes a word in quotes, of which the first is gone already, with the blanks after it.
std::optional<std::string> takeQuoted(std::string_view& rest) {
    std::string word;
    while (!rest.empty()) {
        const char sign = rest.front();
        rest.remove_prefix(1);
        if (sign == '"') {
            rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
            return word;
        }
        const auto plain = sign == '\\' ? takeEscape(rest) : std::optional(sign);
        if (!plain)
            return std::nullopt;
        word += *plain;
    }
    return std::nullopt;
}

/// Takes everything up to the next comma.
std::optional<std::string> takeBare(std::string_view& rest) {
    const auto word = trimmed(rest.substr(0, rest.find(',')));
    rest.remove_prefix(std::min(rest.find(','), rest.size()));
    if (word.find_first_of("\"\\") != std::string_view::npos)
        return std::nullopt;
    return std::string(word);
}

std::optional<IniText::Words> parsed(std::string_view value) {
    IniText::Words words;
    auto rest = trimmed(value);
    if (rest.empty())
        return words;
    for (;;) {
        rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
        const bool quoted = rest.starts_with('"');
        rest.remove_prefix(quoted ? 1 : 0);
        auto word = quoted ? takeQuoted(rest) : takeBare(rest);
        if (!word)
            return std::nullopt;
        words.push_back(*std::move(word));
        if (rest.empty())
            return words;
        if (rest.front() != ',')
            return std::nullopt;
        rest.remove_prefix(1);
    }
}

bool needsNoQuotes(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("._-+/:").find(c) != std::string_view::npos;
}

std::string written(const std::string& word) {
    if (!word.empty() && std::all_of(word.begin(), word.end(), needsNoQuotes))
        return word;
    static constexpr std::string_view hex = "0123456789ABCDEF";
    std::string text = "\"";
    for (const char c : word) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            (text += '\\') += c;
        else if (byte < 0x20 || byte == 0x7F)
            ((text += "\\x") += hex[byte >> 4]) += hex[byte & 0xF];
        else
            text += c;
    }
    return text + '"';
}

} // namespace

template <class Visit> void IniText::forOwnLines(Visit visit) const {
    bool own = true;
    for (std::size_t begin = 0; begin < text_.size();) {
        const auto end = std::min(text_.find('\n', begin), text_.size());
        const auto name = headerName(std::string_view(text_).substr(begin, end - begin));
        if (name)
            own = *name == "General";
        if (own)
            visit(Range{begin, end}, name.has_value());
        begin = end + 1;
    }
}

std::optional<IniText::Range> IniText::find(std::string_view key) const {
    std::optional<Range> found;
    forOwnLines([&](Range line, bool) {
        const auto text = std::string_view(text_).substr(line.begin, line.end - line.begin);
        const auto equals = text.find('=');
        if (equals != std::string_view::npos && trimmed(text.substr(0, equals)) == key)
            found = line;
    });
    return found;
}

std::optional<IniText::Words> IniText::words(std::string_view key) const {
    const auto line = find(key);
    if (!line)
        return std::nullopt;
    const auto text = std::string_view(text_).substr(line->begin, line->end - line->begin);
    return parsed(text.substr(text.find('=') + 1));
}

void IniText::set(std::string_view key, const Words& words) {
    std::string line = std::string(key) + '=';
    for (std::size_t i = 0; i < words.size(); ++i)
        line += (i ? ", " : "") + written(words[i]);
    if (const auto old = find(key))
        text_.replace(old->begin, old->end - old->begin, line);
    else
        insert(line);
}

void IniText::insert(const std::string& line) {
    // After the last line with something on it below the last header of the section.
    std::optional<std::size_t> place;
    forOwnLines([&](Range own, bool isHeader) {
        const auto text = std::string_view(text_).substr(own.begin, own.end - own.begin);
        if (isHeader || (place && !trimmed(text).empty()))
            place = own.end;
    });
    if (place) {
        text_.insert(*place, '\n' + line);
        if (*place + 1 + line.size() == text_.size())
            text_ += '\n';
        return;
    }
    if (!text_.empty() && text_.back() != '\n')
        text_ += '\n';
    text_ += "[General]\n" + line + '\n';
}

} // namespace tarvik
