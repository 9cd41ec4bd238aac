#import "platform/macos/appkit_applications.h"
#import "platform/macos/appkit_workspace.h"

#include "macos/appkit/appkit_test.h"

namespace tarvik {
namespace {

using namespace recorder;

class ApplicationsTest : public AppKitTest {
protected:
    void SetUp() override {
        AppKitTest::SetUp();
        desk().applications = {
            {10, "com.example.Browser", "Browser", NSApplicationActivationPolicyRegular},
            {11, std::nullopt, "Tool", NSApplicationActivationPolicyRegular},
            {12, "com.example.agent", std::nullopt, NSApplicationActivationPolicyAccessory},
        };
    }
};

TEST_F(ApplicationsTest, FrontmostApplicationIsAskedForAtEachPressAndLeavesNothingBehind) {
    const AppKitWorkspace workspace;
    const auto before = liveObjects();
    EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);
    EXPECT_EQ(workspace.frontmostProcess(), std::nullopt);
    desk().frontmost = 10;
    EXPECT_EQ(workspace.frontmostApplication(), "com.example.Browser");
    EXPECT_EQ(workspace.frontmostProcess(), 10);
    desk().frontmost = 11;
    EXPECT_EQ(workspace.frontmostApplication(), std::nullopt) << "it has no identifier";
    EXPECT_EQ(workspace.frontmostProcess(), 11);
    EXPECT_EQ(workspace.localizedName(11), "Tool");
    EXPECT_EQ(workspace.localizedName(12), std::nullopt);
    EXPECT_EQ(workspace.localizedName(99), std::nullopt);
    EXPECT_EQ(liveObjects(), before);
}

TEST_F(ApplicationsTest, OpensFilesAndPages) {
    AppKitWorkspace workspace;
    desk().files = {"/System/Applications/Apps.app"};
    EXPECT_TRUE(workspace.fileExists("/System/Applications/Apps.app"));
    EXPECT_FALSE(workspace.fileExists("/System/Applications/Other.app"));
    workspace.openFile("/System/Applications/Apps.app");
    workspace.openUrl("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    EXPECT_EQ(desk().openedUrls, (std::vector<std::string>{
                                     "file:///System/Applications/Apps.app",
                                     "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"}));
    EXPECT_FALSE(workspace.frontmostIsTerminal());
}

TEST_F(ApplicationsTest, RunningOnesComeInTheSystemsOrderWithWhatIsKnownOfThem) {
    AppKitApplications applications;
    const auto running = applications.running();
    ASSERT_EQ(running.size(), 3u);
    EXPECT_EQ(running[0].processId, 10);
    EXPECT_EQ(running[0].id, "com.example.Browser");
    EXPECT_EQ(running[0].name, "Browser");
    EXPECT_TRUE(running[0].regular);
    EXPECT_EQ(running[1].id, std::nullopt);
    EXPECT_EQ(running[2].name, std::nullopt);
    EXPECT_FALSE(running[2].regular);
    EXPECT_EQ(applications.ownId(), "org.tarvik.Tarvik");
    desk().bundleIdentifier = std::nullopt;
    EXPECT_EQ(applications.ownId(), "");
}

TEST_F(ApplicationsTest, InstalledOnesHaveTheirNameAndIcon) {
    AppKitApplications applications;
    desk().installed = {{"com.example.Browser", "/Applications/Browser.app"}};
    EXPECT_FALSE(applications.installed("com.example.Gone", 18));
    const auto browser = applications.installed("com.example.Browser", 18);
    ASSERT_TRUE(browser);
    EXPECT_EQ(browser->name, "Browser");
    ASSERT_TRUE(browser->icon);
    EXPECT_EQ(browser->icon->width, 18);
    EXPECT_EQ(browser->icon->height, 18);
    EXPECT_EQ(browser->icon->argb, std::vector<std::uint32_t>(18 * 18, 0xFF204060));
    EXPECT_FALSE(applications.installed("com.example.Browser", 0)->icon);
}

} // namespace
} // namespace tarvik
