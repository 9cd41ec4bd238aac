// Runs every file of tests/gestures, each as a test of its own.
#include "engine/script_world.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace tarvik {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> scripts() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(TARVIK_GESTURE_SCRIPTS)) {
        if (entry.path().extension() == ".gesture")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

class GestureScript : public testing::TestWithParam<fs::path> {};

TEST_P(GestureScript, behavesAsWritten) {
    std::ifstream file(GetParam());
    std::ostringstream script;
    script << file.rdbuf();
    ASSERT_NE(script.str().find("expect"), std::string::npos) << "a script that expects nothing cannot fail";
    for (const auto& failure : ScriptWorld().run(script.str()))
        ADD_FAILURE() << GetParam().filename().string() << " " << failure;
}

INSTANTIATE_TEST_SUITE_P(Gestures, GestureScript, testing::ValuesIn(scripts()), [](const auto& info) {
    auto name = info.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(GestureScriptDriver, noticesWhatIsWrong) {
    const auto failures = [](const char* script) { return ScriptWorld().run(script).size(); };
    EXPECT_EQ(failures("press right 10,10\nrelease\n"), 1U) << "a click that nobody expected";
    EXPECT_EQ(failures("press right 10,10\nexpect pass\n"), 1U);
    EXPECT_EQ(failures("press right 10,10\nrelease\nexpect click right 11,10\n"), 2U) << "both halves are elsewhere";
    EXPECT_EQ(failures("press right 10,10\nmove 60,10\nrelease\nexpect perform spaceLeft 10,10\n"), 1U);
    EXPECT_EQ(failures("expect colour\n"), 1U);
    EXPECT_EQ(failures("wheel 1\nexpect wheel 1 10 2\n"), 1U);
}

} // namespace
} // namespace tarvik
