// The stored form of the gesture table: any text decodes or is refused, and what decodes survives the way round. The
// same bytes, taken as a table, survive it, too.
#include "model/gesture_table_json.h"
#include "require.h"

#include <cstdint>
#include <string>

namespace tarvik {
namespace {

using fuzz::isText;
using fuzz::require;

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

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tarvik::textToTable(bytes);
    tarvik::tableToText(bytes);
    return 0;
}
