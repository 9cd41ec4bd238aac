// Keys as they are posted, and the names that the layout gives them.
#include "macos/support/mac_actions.h"
#include "macos/support/mac_test.h"

#include <ostream>

namespace tarvik {

std::ostream& operator<<(std::ostream& out, const KeyEvent& key) {
    return out << key.code << (key.down ? " down " : " up ") << std::hex << key.flags << std::dec;
}

namespace {

using namespace sim;
using testing::ElementsAre;
using testing::ElementsAreArray;

/// What the applications got; every key must have come from the level of the hardware with the program's marker.
std::vector<KeyEvent> typed() {
    std::vector<KeyEvent> keys;
    for (const auto& [place, event] : world().posted) {
        EXPECT_EQ(place, 0U);
        EXPECT_EQ(event.integer(kCGEventSourceUserData), 0x54415256494B4556);
        keys.push_back({static_cast<std::uint16_t>(event.integer(kCGKeyboardEventKeycode)),
                        event.type == kCGEventKeyDown, event.flags});
    }
    world().posted.clear();
    return keys;
}

struct KeyAction {
    ActionKind kind;
    std::vector<KeyEvent> keys;
};

std::vector<KeyEvent> withCommand(std::uint16_t code) {
    return {{55, true, 0x100000}, {code, true, 0x100000}, {code, false, 0x100000}, {55, false, 0}};
}
std::vector<KeyEvent> withShiftCommand(std::uint16_t code) {
    return {{56, true, 0x20000},     {55, true, 0x120000}, {code, true, 0x120000},
            {code, false, 0x120000}, {55, false, 0x20000}, {56, false, 0}};
}
std::vector<KeyEvent> withControl(std::uint16_t arrow) {
    return {{59, true, 0x40000}, {arrow, true, 0xA40000}, {arrow, false, 0xA40000}, {59, false, 0}};
}
std::vector<KeyEvent> withCommandArrow(std::uint16_t arrow) {
    return {{55, true, 0x100000}, {arrow, true, 0xB00000}, {arrow, false, 0xB00000}, {55, false, 0}};
}

const std::vector<KeyAction> keyActions = {
    {ActionKind::none, {}},
    {ActionKind::spaceLeft, withControl(123)},
    {ActionKind::spaceRight, withControl(124)},
    {ActionKind::nextTab, withShiftCommand(30)},
    {ActionKind::previousTab, withShiftCommand(33)},
    {ActionKind::newTab, withCommand(17)},
    {ActionKind::closeTab, withCommand(13)},
    {ActionKind::reopenTab, withShiftCommand(17)},
    {ActionKind::nextWindow, withCommand(50)},
    {ActionKind::previousWindow, withShiftCommand(50)},
    {ActionKind::previousApp, withCommand(48)},
    {ActionKind::closeWindow, withShiftCommand(13)},
    {ActionKind::hideApp, withCommand(4)},
    {ActionKind::quitApp, withCommand(12)},
    {ActionKind::back, withCommand(33)},
    {ActionKind::forward, withCommand(30)},
    {ActionKind::reload, withCommand(15)},
    {ActionKind::scrollTop, withCommandArrow(126)},
    {ActionKind::scrollBottom, withCommandArrow(125)},
    {ActionKind::custom, {}},
};

class KeysTest : public MacTest {
protected:
    RecordingLog log;
};

TEST_F(KeysTest, everyActionThatIsKeysPostsItsSequence) {
    MacActions mac(log);
    for (const auto& [kind, keys] : keyActions) {
        SCOPED_TRACE(rawValue(kind));
        log.clear();
        mac.performer.perform({kind, {}}, Point{1, 1});
        EXPECT_THAT(typed(), ElementsAreArray(keys));
        EXPECT_EQ(log.lines().size(), 1U);
    }
    EXPECT_THAT(world().axCalls, testing::IsEmpty());
    EXPECT_THAT(world().dockNotifications, testing::IsEmpty());
}

TEST_F(KeysTest, recordedKeysWithAllModifiersAndBitsThatAreDropped) {
    MacActions mac(log);
    mac.performer.perform({ActionKind::custom, KeyShortcut{103, 0x1E0000 | 0xA00000 | 0x10000}}, {});
    EXPECT_THAT(typed(),
                ElementsAre(KeyEvent{59, true, 0x40000}, KeyEvent{58, true, 0xC0000}, KeyEvent{56, true, 0xE0000},
                            KeyEvent{55, true, 0x1E0000}, KeyEvent{103, true, 0x9E0000}, KeyEvent{103, false, 0x9E0000},
                            KeyEvent{55, false, 0xE0000}, KeyEvent{56, false, 0xC0000}, KeyEvent{58, false, 0x40000},
                            KeyEvent{59, false, 0}));
}

TEST_F(KeysTest, oneSourceOfTheHardwareStateThatHoldsNothingBack) {
    QuartzKeyPoster poster;
    poster.post({{17, true, 0}, {17, false, 0}});
    EXPECT_THAT(world().sourceStates, ElementsAre(kCGEventSourceStateHIDSystemState));
    EXPECT_THAT(world().suppressionIntervals, ElementsAre(0.0));
    world().posted.clear();
    world().refuseKeyEvents = true;
    poster.post({{17, true, 0}, {17, false, 0}});
    EXPECT_TRUE(world().posted.empty()) << "what cannot be made is skipped";
}

TEST_F(KeysTest, namesAreTheLayoutsCharactersInUpperCase) {
    int changes = 0;
    TisKeyboardLayout layout([&] { ++changes; });
    world().layout->keys = {{17, u"t"}, {30, u"]"}, {50, u"`"}, {12, u"é"}, {5, u""}};
    EXPECT_EQ(layout.character(17), "T");
    EXPECT_THAT(world().keyTranslations, ElementsAre("17 3 0 91 0 0 4"));
    EXPECT_EQ(layout.character(30), "]");
    EXPECT_EQ(layout.character(12), "É");
    EXPECT_EQ(layout.character(5), std::nullopt);
    EXPECT_EQ(layout.character(65535), std::nullopt);
    EXPECT_EQ(layout.positionOf('t'), 17);
    EXPECT_EQ(layout.positionOf('q'), std::nullopt);

    world().layout->status = -50;
    EXPECT_EQ(layout.character(17), std::nullopt);
    world().layout->status = 0;
    world().layout->hasData = false;
    EXPECT_EQ(layout.character(17), std::nullopt);
    world().layout.reset();
    EXPECT_EQ(layout.character(17), std::nullopt);

    notify(CFSTR("com.apple.Carbon.TISNotifySelectedKeyboardInputSourceChanged"));
    EXPECT_EQ(changes, 1);
}

TEST_F(KeysTest, titlesOfRecordedKeysSpeakTheLayout) {
    MacActions mac(log);
    world().layout->keys = {{17, u"t"}};
    mac.performer.perform({ActionKind::custom, KeyShortcut{17, 0x100000}}, {});
    mac.performer.perform({ActionKind::custom, KeyShortcut{200, 0}}, {});
    EXPECT_THAT(log.lines(), ElementsAre("perform Shortcut ⌘T", "perform Shortcut #200"));
}

} // namespace
} // namespace tarvik
