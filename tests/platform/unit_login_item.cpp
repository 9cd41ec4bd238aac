// The autostart entry: what is written, and what other programs may have made of it.
#include "platform/linux/common/xdg_login_item.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace tarvik {
namespace {

namespace fs = std::filesystem;

class LoginItemTest : public testing::Test {
protected:
    LoginItemTest() {
        std::string name = (fs::temp_directory_path() / "tarvik-autostart-XXXXXX").string();
        folder = mkdtemp(name.data());
        file = folder / "autostart/tarvik.desktop";
    }
    ~LoginItemTest() override { fs::remove_all(folder); }

    std::string text() const {
        std::ostringstream all;
        all << std::ifstream(file).rdbuf();
        return all.str();
    }

    fs::path folder;
    fs::path file;
};

TEST_F(LoginItemTest, theEntryComesAndGoes) {
    XdgLoginItem item(folder / "autostart", "/bin/sh");
    EXPECT_FALSE(item.enabled());
    EXPECT_EQ(item.setEnabled(true), std::nullopt);
    EXPECT_TRUE(item.enabled());
    EXPECT_NE(text().find("\nExec=\"/bin/sh\"\nTryExec=/bin/sh\n"), std::string::npos) << text();

    std::ofstream(file, std::ios::app) << "Hidden=true\n";
    EXPECT_FALSE(item.enabled()) << "somebody else switched it off";
    EXPECT_EQ(item.setEnabled(true), std::nullopt);
    EXPECT_TRUE(item.enabled());

    EXPECT_EQ(item.setEnabled(false), std::nullopt);
    EXPECT_EQ(item.setEnabled(false), std::nullopt);
    EXPECT_FALSE(item.enabled());
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(LoginItemTest, theTemplateForAdministratorsIsWhatItWrites) {
    EXPECT_EQ(XdgLoginItem(folder / "autostart", TARVIK_INSTALLED_PROGRAM).setEnabled(true), std::nullopt);
    const auto written = text();
    file = TARVIK_AUTOSTART_TEMPLATE;
    EXPECT_EQ(text(), written);
}

TEST_F(LoginItemTest, aRefusedChangeLeavesEverythingAsItWas) {
    std::ofstream(folder / "autostart") << "a file where the folder is due";
    XdgLoginItem item(folder / "autostart", "/bin/sh");
    const auto refusal = item.setEnabled(true);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(*refusal, file.string() + ": Not a directory");
    EXPECT_FALSE(item.enabled());

    fs::remove(folder / "autostart");
    fs::create_directories(file / "a folder where the file is due");
    EXPECT_TRUE(item.setEnabled(true));
    EXPECT_TRUE(item.setEnabled(false));
    EXPECT_FALSE(item.enabled());
}

TEST_F(LoginItemTest, whatDesktopsMakeOfAnEntry) {
    const std::string entry = "[Desktop Entry]\nExec=tarvik\n";
    struct {
        const char* lines;
        bool starts;
    } const cases[] = {
        {"", true},
        {"Hidden=false\nX-GNOME-Autostart-enabled=true\n", true},
        {"Hidden = true\n", false},
        {"X-GNOME-Autostart-enabled=false\r\n", false},
        {"OnlyShowIn=KDE;XFCE;\n", true},
        {"OnlyShowIn=KDE;GNOME;\n", false},
        {"OnlyShowIn=\n", false},
        {"NotShowIn=XFCE\n", false},
        {"NotShowIn=KDE;\n", true},
        {"TryExec=sh\n", true},
        {"TryExec=/bin/no-such-program\n", false},
        {"TryExec=no-such-program\n", false},
        {"# Hidden=true\n[Other]\nHidden=true\n", true},
    };
    for (const auto& [lines, starts] : cases)
        EXPECT_EQ(startsWithSession(entry + lines, "X-Own:XFCE"), starts) << lines;
    EXPECT_FALSE(startsWithSession("", "XFCE"));
    EXPECT_FALSE(startsWithSession("[Other]\nExec=tarvik\n", "XFCE"));
}

TEST_F(LoginItemTest, strangePathsAreOneArgument) {
    EXPECT_EQ(execArgument("/opt/my apps/tarvik"), R"("/opt/my apps/tarvik")");
    EXPECT_EQ(execArgument(R"(/a$b/100%/"c"\d)"), R"("/a\\$b/100%%/\\"c\\"\\\\d")");
}

} // namespace
} // namespace tarvik
