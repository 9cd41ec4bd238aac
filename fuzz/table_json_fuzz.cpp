// The stored form of the gesture table: any text decodes or is refused, and what decodes survives the way round. The
// same bytes, taken as a table, survive it, too.
#include "model/gesture_table_json.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace tarvik {
namespace {

void require(bool condition, const char* what) {
    if (condition)
        return;
    std::cerr << what << '\n';
    std::abort();
}

void textToTable(const std::string& text) {
    const auto table = decodeGestureTable(text);
    if (!table)
        return;
    for (const auto& [gesture, action] : *table)
        require(index(action.kind) < actionKindCount, "an action that there is not");
    const auto again = encodeGestureTable(*table);
    require(again.has_value(), "what was decoded is not encoded");
    require(decodeGestureTable(*again) == table, "another table after the way round");
    // One more entry, and one that is bad.
    auto more = *again;
    more.insert(1, table->empty() ? R"("\n":{"kind":"back"})" : R"("\n":{"kind":"back"},)");
    require(decodeGestureTable(more).has_value(), "a good entry spoils the table");
    auto bad = *again;
    bad.insert(1, table->empty() ? R"("\n":{"kind":"Back"})" : R"("\n":{"kind":"Back"},)");
    require(decodeGestureTable(bad).has_value() == table->contains("\n"), "a bad entry does not spoil the table");
}

bool isText(std::string_view bytes); // UTF-8

void tableToText(const std::string& bytes) {
    GestureTable table;
    bool allText = true;
    for (std::size_t i = 0; i + 12 <= bytes.size(); i += 16) {
        GestureAction action{static_cast<ActionKind>(static_cast<unsigned char>(bytes[i]) % actionKindCount), {}};
        if (bytes[i + 1] & 1) {
            action.custom.emplace();
            for (std::size_t k = 2; k < 4; ++k)
                action.custom->keyCode =
                    static_cast<std::uint16_t>(action.custom->keyCode << 8 | static_cast<unsigned char>(bytes[i + k]));
            for (std::size_t k = 4; k < 12; ++k)
                action.custom->modifiers = action.custom->modifiers << 8 | static_cast<unsigned char>(bytes[i + k]);
        }
        const auto gesture = bytes.substr(i + 12, 4);
        allText = allText && isText(gesture);
        table[gesture] = action;
    }
    const auto text = encodeGestureTable(table);
    require(text.has_value() == allText, "texts are encoded, and nothing else");
    require(!text || decodeGestureTable(*text) == table, "another table after the way round");
}

/// By the table of well-formed byte sequences in the Unicode standard (3.9, table 3-7).
bool isText(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const auto at = [&](std::size_t k) { return k < bytes.size() ? static_cast<unsigned char>(bytes[k]) : 0U; };
        const auto within = [&](std::size_t k, unsigned low, unsigned high) { return at(k) >= low && at(k) <= high; };
        const unsigned first = at(i);
        const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
        const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
        const std::size_t more = first < 0x80 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
        if (first > 0xF4 || (first >= 0x80 && first < 0xC2) || (more > 0 && !within(i + 1, low, high)))
            return false;
        for (std::size_t k = 2; k <= more; ++k) {
            if (!within(i + k, 0x80, 0xBF))
                return false;
        }
        i += more + 1;
    }
    return true;
}

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tarvik::textToTable(bytes);
    tarvik::tableToText(bytes);
    return 0;
}
