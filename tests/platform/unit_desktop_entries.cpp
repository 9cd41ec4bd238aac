#include "platform/linux/common/desktop_entries.h"
#include "support/printable.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace tarvik {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::SizeIs;

DesktopEntry parsed(std::string_view text, std::string_view locale = "") {
    return parseDesktopEntry("id", text, locale).value_or(DesktopEntry{});
}

TEST(DesktopEntry, keysOfItsGroupOnly) {
    const auto entry =
        parsed("# a comment\n\n[Other]\nName=no\n[Desktop Entry]\r\nType=Application\r\n Name = Text\\sEditor \r\n"
               "Icon=edit\nExec=env A=1 \"/opt/my tools/edit\" --new %U\nStartupWMClass=Edit\n"
               "Categories=Utility;TextEditor;\nName=second\nbroken line\n[Desktop Action New]\nName=New\n");
    EXPECT_EQ(entry.name, "Text Editor");
    EXPECT_EQ(entry.icon, "edit");
    EXPECT_EQ(entry.program, "edit");
    EXPECT_EQ(entry.startupWmClass, "Edit");
    EXPECT_THAT(entry.categories, ElementsAre("Utility", "TextEditor"));
    EXPECT_TRUE(entry.hasCategory("TextEditor"));
    EXPECT_FALSE(entry.noDisplay);
}

TEST(DesktopEntry, nameInTheUsersLanguage) {
    const auto text = "[Desktop Entry]\nType=Application\nName=Files\nName[de]=Dateien\nName[de_AT]=Akten\n"
                      "Name[sr@latin]=Datoteke\n";
    EXPECT_EQ(parsed(text, "de_AT.UTF-8").name, "Akten");
    EXPECT_EQ(parsed(text, "de_DE.UTF-8").name, "Dateien");
    EXPECT_EQ(parsed(text, "sr_RS.UTF-8@latin").name, "Datoteke");
    EXPECT_EQ(parsed(text, "fr_FR").name, "Files");
}

TEST(DesktopEntry, programsThatRunOthersDoNotNameTheApplication) {
    for (const auto* command : {"flatpak run org.example.App", "/usr/bin/python3 /opt/app.py", "sh -c app", "env -i"})
        EXPECT_EQ(parsed(std::string("[Desktop Entry]\nType=Application\nExec=") + command).program, "") << command;
}

TEST(DesktopEntry, hostileText) {
    EXPECT_FALSE(parseDesktopEntry("id", "", ""));
    EXPECT_FALSE(parseDesktopEntry("id", "Name=no group\n", ""));
    EXPECT_FALSE(parseDesktopEntry("id", "[Desktop Entry]\nType=Link\nName=x\n", ""));
    EXPECT_EQ(parsed("[Desktop Entry]\nType=Application\nName=a\x01\xff\\").name, "a �\\");
    EXPECT_THAT(parsed("[Desktop Entry]\nType=Application\nName=" + std::string(100'000, 'x')).name, SizeIs(256));
    EXPECT_THAT(parsed("[Desktop Entry]\nType=Application\nCategories=" + std::string(100'000, ';')).categories,
                SizeIs(0));
    EXPECT_EQ(parsed("[Desktop Entry]\nType=Application\nExec=\"unclosed").program, "unclosed");
}

class DesktopEntriesTest : public testing::Test {
protected:
    DesktopEntriesTest() {
        std::string name = (fs::temp_directory_path() / "tarvik-entries-XXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~DesktopEntriesTest() override { fs::remove_all(folder); }

    void write(const fs::path& file, const std::string& keys) {
        fs::create_directories((folder / file).parent_path());
        std::ofstream(folder / file) << "[Desktop Entry]\nType=Application\n" << keys;
    }
    std::string byClass(const DesktopEntries& entries, std::string_view instance, std::string_view className) {
        const auto* entry = entries.byWmClass(instance, className);
        return entry ? entry->id : "none";
    }

    fs::path folder;
};

TEST_F(DesktopEntriesTest, theFirstFolderWinsAndMayHide) {
    write("user/a.desktop", "Name=Mine\n");
    write("user/b.desktop", "Hidden=true\n");
    write("system/a.desktop", "Name=Theirs\n");
    write("system/b.desktop", "Name=B\n");
    write("system/kde/c.desktop", "Name=C\n");
    write("system/readme.txt", "Name=D\n");
    const DesktopEntries entries({folder / "user", folder / "missing", folder / "system"}, "");
    EXPECT_EQ(entries.byId("a")->name, "Mine");
    EXPECT_EQ(entries.byId("a.desktop")->name, "Mine");
    EXPECT_EQ(entries.byId("b"), nullptr);
    EXPECT_EQ(entries.byId("kde-c")->name, "C");
    EXPECT_THAT(entries.all(), SizeIs(2));
}

TEST_F(DesktopEntriesTest, windowsFindTheirApplication) {
    write("claims.desktop", "StartupWMClass=Navigator\n");
    write("org.example.Editor.desktop", "Exec=edit\n");
    write("viewer.desktop", "Exec=/usr/bin/img-view %f\n");
    write("helper.desktop", "StartupWMClass=Shared\nNoDisplay=true\n");
    write("shown.desktop", "StartupWMClass=shared\n");
    const DesktopEntries entries({folder}, "");
    EXPECT_EQ(byClass(entries, "", "navigator"), "claims");
    EXPECT_EQ(byClass(entries, "Navigator", "browser"), "claims");
    EXPECT_EQ(byClass(entries, "x", "org.example.editor"), "org.example.Editor");
    EXPECT_EQ(byClass(entries, "x", "Editor"), "org.example.Editor");
    EXPECT_EQ(byClass(entries, "img-view", "Img"), "viewer");
    EXPECT_EQ(byClass(entries, "x", "Shared"), "shown");
    EXPECT_EQ(byClass(entries, "x", "y"), "none");
    EXPECT_EQ(byClass(entries, "", ""), "none");
}

TEST_F(DesktopEntriesTest, strangeFilesAreStrangeAlone) {
    write("good.desktop", "Name=Good\n");
    fs::create_symlink(folder / "nowhere", folder / "dangling.desktop");
    fs::create_symlink(folder, folder / "again");
    fs::create_directory(folder / "folder.desktop");
    ASSERT_EQ(mkfifo((folder / "pipe.desktop").c_str(), 0600), 0);
    fs::resize_file(folder / "good.desktop", 100'000'000);
    const DesktopEntries entries({folder}, "");
    ASSERT_TRUE(entries.byId("good"));
    EXPECT_EQ(entries.byId("good")->name, "Good");
}

TEST(Text, printableIsOneLineOfValidUtf8) {
    EXPECT_EQ(printable("tab\tline\nnext\x7f", 100), "tab line next ");
    EXPECT_EQ(printable("Größe 日本 😀", 100), "Größe 日本 😀");
    EXPECT_EQ(printable("a\xC3", 100), "a�");
    EXPECT_EQ(printable("\xC0\xAF\xED\xA0\x80", 100), "�����");
    EXPECT_EQ(printable("a\u202Eb\u2028c\u0085d\u200Fe", 100), "a b c d e");
    EXPECT_EQ(printable("日本", 5), "日");
}

} // namespace
} // namespace tarvik
