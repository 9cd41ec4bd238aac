#include "model/gesture_table_json.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(GestureTableJson, readsTheDocumentedForm) {
    const auto table = decodeGestureTable(
        R"({"L":{"kind":"spaceLeft"},"DD":{"kind":"custom","custom":{"keyCode":17,"modifiers":1048576}}})");
    const GestureTable expected = {{"L", {ActionKind::spaceLeft, {}}},
                                   {"DD", {ActionKind::custom, KeyShortcut{17, 0x100000}}}};
    EXPECT_EQ(table, expected);
}

TEST(GestureTableJson, keepsEveryBitOnTheWayRound) {
    const GestureTable table = {
        {"L", {ActionKind::back, {}}},
        {"R", {ActionKind::custom, KeyShortcut{65535, 0xFFFFFFFFFFFFFFFF}}},
        {"U", {ActionKind::custom, KeyShortcut{0, (std::uint64_t{1} << 53) + 1}}},
        {"D", {ActionKind::reload, KeyShortcut{17, 0}}},
    };
    const auto json = encodeGestureTable(table);
    ASSERT_TRUE(json);
    EXPECT_EQ(decodeGestureTable(*json), table);
    EXPECT_NE(json->find(R"("L":{"kind":"back"})"), std::string::npos) << "no member for an absent shortcut: " << *json;
}

TEST(GestureTableJson, oneBadEntrySpoilsTheWhole) {
    for (const auto* bad : {
             R"({"L":{"kind":"Back"}})",
             R"({"L":{}})",
             R"({"L":{"kind":7}})",
             R"({"L":"back"})",
             R"({"L":{"kind":"custom","custom":{"keyCode":17}}})",
             R"({"L":{"kind":"custom","custom":{"modifiers":0}}})",
             R"({"L":{"kind":"custom","custom":{"keyCode":65536,"modifiers":0}}})",
             R"({"L":{"kind":"custom","custom":{"keyCode":-1,"modifiers":0}}})",
             R"({"L":{"kind":"custom","custom":{"keyCode":17,"modifiers":18446744073709551616}}})",
             R"({"L":{"kind":"custom","custom":[17,0]}})",
             R"(["L"])",
             "{",
             "",
             "\xFF\xFE",
         }) {
        const std::string mixed(bad);
        EXPECT_EQ(decodeGestureTable(mixed), std::nullopt) << bad;
        if (mixed.starts_with("{\"L\"")) {
            EXPECT_EQ(decodeGestureTable(R"({"R":{"kind":"back"},)" + mixed.substr(1)), std::nullopt) << bad;
        }
    }
}

TEST(GestureTableJson, acceptsWhatALaterVersionMayAdd) {
    const GestureTable expected = {{"L", {ActionKind::back, {}}}};
    EXPECT_EQ(decodeGestureTable(R"({"L":{"kind":"back","custom":null,"note":[1,2]}})"), expected);
    EXPECT_EQ(decodeGestureTable("{}"), GestureTable{});
}

TEST(GestureTableJson, refusesToWriteWhatIsNotText) { EXPECT_EQ(encodeGestureTable({{"\xFF", {}}}), std::nullopt); }

} // namespace
} // namespace tarvik
