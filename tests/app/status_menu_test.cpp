#include "app/status_menu.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

/// "title", "*title" when checked, "(title)" when disabled, "title ^k" with a key, "-" for a separator.
std::vector<std::string> rows(const std::vector<MenuItem>& items) {
    std::vector<std::string> all;
    for (const auto& item : items) {
        auto row = item.isSeparator() ? "-" : item.title;
        if (item.checked.value_or(false))
            row = '*' + row;
        if (!item.enabled)
            row = '(' + row + ')';
        if (item.keyEquivalent)
            row += std::string(" ^") + item.keyEquivalent;
        all.push_back(row);
    }
    return all;
}

TEST(StatusMenu, everyCombination) {
    for (const bool enabled : {false, true}) {
        for (const bool trusted : {false, true}) {
            for (const bool updates : {false, true}) {
                std::vector<std::string> expected = {"(Tarvik — Mouse Gestures)", "-",
                                                     enabled ? "*Gestures Enabled ^e" : "Gestures Enabled ^e"};
                if (!trusted)
                    expected.emplace_back("⚠︎ Grant Accessibility Permission…");
                expected.insert(expected.end(), {"-", "Preferences… ^,"});
                if (updates)
                    expected.emplace_back("Check for Updates…");
                expected.insert(expected.end(), {"-", "Quit Tarvik ^q"});
                EXPECT_EQ(rows(statusMenu({enabled, trusted, updates}, {}, macosWording())), expected);
            }
        }
    }
}

TEST(StatusMenu, theSwitchHasAMarkEvenWhenOff) {
    EXPECT_EQ(statusMenu({}, {}, macosWording())[2].checked, false);
    EXPECT_EQ(statusMenu({}, {}, linuxWording())[3].title, "⚠︎ Gestures Need an X11 Session…");
}

} // namespace
} // namespace tarvik
