// The text of an INI file, edited in place: what is not understood stays as it was, byte for byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// Reads and changes the keys of the section [General], to which lines above the first section belong, too. Lines that
/// are no "key=value", comments, other sections and the order of everything are kept.
///
/// A value is a list of words with commas between them. A word with anything but letters, digits and a few signs is
/// written in double quotes, where \" and \\ stand for the sign after the backslash, \n, \r and \t for the usual
/// controls, and \xHH for any byte.
class IniText {
public:
    using Words = std::vector<std::string>;

    explicit IniText(std::string text = {}) : text_(std::move(text)) {}

    /// Nothing when the key is missing or its value is malformed. Of several lines with the key the last one counts.
    std::optional<Words> words(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key).has_value(); }
    void set(std::string_view key, const Words& words);

    const std::string& text() const { return text_; }

private:
    /// A part of the text, up to but without `end`.
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    /// Calls `visit(line, isHeader)` for the lines of [General], without their line feeds.
    template <class Visit> void forOwnLines(Visit visit) const;
    std::optional<Range> find(std::string_view key) const;
    void insert(const std::string& line);

    std::string text_;
};

} // namespace tarvik
