#import "platform/macos/appkit_status_item.h"

#include "macos/appkit/appkit_test.h"

namespace tarvik {
namespace {

using namespace recorder;

class StatusItemTest : public AppKitTest {
protected:
    static NSStatusItem* shown() { return desk().statusItems.at(0); }
    static NSStatusBarButton* button() { return [shown() button]; }
};

TEST_F(StatusItemTest, IsSquareAndHasAMenuThatIsEmptyAtFirst) {
    const AppKitStatusItem item;
    EXPECT_EQ([shown() length], -2);
    EXPECT_NE([[shown() menu] delegate], nil);
    EXPECT_EQ([openMenu(shown()) count], 0u);
}

TEST_F(StatusItemTest, SymbolsAreTemplatesThatSayWhoseTheyAre) {
    AppKitStatusItem item;
    item.setIcon(StatusIcon::handRaisedSlash, "Tarvik", true);
    EXPECT_EQ(value<std::string>([button() image], "symbol"), "hand.raised.slash");
    EXPECT_TRUE([button() appearsDisabled]);
    item.setIcon(StatusIcon::handDraw, "Tarvik", false);
    EXPECT_EQ(value<std::string>([button() image], "symbol"), "hand.draw");
    EXPECT_EQ(value<std::string>([button() image], "accessibilityDescription"), "Tarvik");
    EXPECT_TRUE([[button() image] isTemplate]);
    EXPECT_FALSE([button() appearsDisabled]);
    EXPECT_EQ(objectsOf([NSImage class]).size(), 1u);
}

TEST_F(StatusItemTest, MenuIsMadeAnewEachTimeItOpens) {
    AppKitStatusItem item;
    std::vector<std::string> chosen;
    bool enabled = true;
    item.setMenu([&] {
        return std::vector<MenuItem>{
            {.title = "Tarvik — Mouse Gestures", .enabled = false},
            MenuItem::separator(),
            {.title = "Gestures Enabled",
             .keyEquivalent = 'e',
             .checked = enabled,
             .action = [&] { enabled = !enabled; }},
            {.title = "Quit Tarvik", .keyEquivalent = 'q', .action = [&] { chosen.push_back("quit"); }},
        };
    });
    NSArray<NSMenuItem*>* items = openMenu(shown());
    ASSERT_EQ([items count], 4u);
    NSMenuItem* heading = [items objectAtIndex:0];
    EXPECT_EQ(text8([heading title]), "Tarvik — Mouse Gestures");
    EXPECT_FALSE([heading isEnabled]);
    EXPECT_EQ([heading action], nullptr);
    EXPECT_EQ([heading target], nil);
    EXPECT_TRUE([[items objectAtIndex:1] isSeparatorItem]);
    NSMenuItem* toggle = [items objectAtIndex:2];
    EXPECT_TRUE([toggle isEnabled]);
    EXPECT_EQ(text8([toggle keyEquivalent]), "e");
    EXPECT_EQ([toggle state], 1);
    EXPECT_EQ([[items objectAtIndex:3] state], 0);

    choose(toggle);
    EXPECT_EQ([toggle state], 1) << "an open menu stays as it is";
    items = openMenu(shown());
    ASSERT_EQ([items count], 4u) << "the old items are gone";
    EXPECT_EQ([[items objectAtIndex:2] state], 0);
    choose([items objectAtIndex:3]);
    EXPECT_EQ(chosen, std::vector<std::string>{"quit"});
}

TEST_F(StatusItemTest, AnActionMayChangeTheMenu) {
    AppKitStatusItem item;
    const auto alive = std::make_shared<int>(0);
    item.setMenu([&]() -> std::vector<MenuItem> {
        return {{.title = "One", .action = [&item, alive] {
                     item.setMenu({});
                     openMenu(shown());
                     ++*alive;
                 }}};
    });
    choose([openMenu(shown()) objectAtIndex:0]);
    EXPECT_EQ(*alive, 1);
}

TEST_F(StatusItemTest, LeavesTheMenuBar) {
    NSMenu* menu = nil;
    {
        const AppKitStatusItem item;
        menu = [[[shown() menu] retain] autorelease];
    }
    EXPECT_TRUE(desk().statusItems.empty());
    EXPECT_EQ([menu delegate], nil) << "a menu that is still open would ask a delegate that is gone";
}

} // namespace
} // namespace tarvik
