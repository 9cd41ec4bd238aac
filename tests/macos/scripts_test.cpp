// The gesture scripts on the simulated Mac, each as a test of its own: those that run on a live desktop, and all others
// that a Mac can act out.
#include "macos/script_mac.h"
#include "macos/support/mac_test.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace tarvik {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& file) {
    std::ifstream in(file);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<fs::path> scripts() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(TARVIK_GESTURE_SCRIPTS)) {
        if (entry.path().extension() == ".gesture" && ScriptMac::knows(contents(entry.path())))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

class ScriptOnMac : public MacTest, public testing::WithParamInterface<fs::path> {};

TEST_P(ScriptOnMac, behavesAsWritten) {
    for (const auto& failure : ScriptMac().run(contents(GetParam())))
        ADD_FAILURE() << GetParam().filename().string() << " " << failure;
}

INSTANTIATE_TEST_SUITE_P(Gestures, ScriptOnMac, testing::ValuesIn(scripts()), [](const auto& info) {
    auto name = info.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

class ScriptMacDriver : public MacTest {};

TEST_F(ScriptMacDriver, runsEveryLiveScript) {
    std::size_t live = 0;
    for (const auto& entry : fs::directory_iterator(TARVIK_GESTURE_SCRIPTS)) {
        const auto script = contents(entry.path());
        if (script.find("\ntags live") == std::string::npos)
            continue;
        ++live;
        EXPECT_TRUE(ScriptMac::knows(script)) << entry.path();
    }
    EXPECT_GT(live, 5U);
}

TEST_F(ScriptMacDriver, noticesWhatIsWrong) {
    const auto failures = [](const char* script) { return ScriptMac().run(script).size(); };
    EXPECT_EQ(failures("press right 10,10\nrelease\n"), 1U) << "a click that nobody expected";
    sim::world().delivered.clear();
    EXPECT_EQ(failures("press right 10,10\nexpect pass\n"), 1U);
    EXPECT_EQ(failures("press right 10,10\nrelease\nexpect click right 11,10\n"), 2U) << "both halves are elsewhere";
    EXPECT_EQ(failures("press right 10,10\nmove 60,10\nrelease\nexpect perform spaceLeft 10,10\n"), 1U);
    sim::world().delivered.clear();
    EXPECT_EQ(failures("expect colour\n"), 1U);
    EXPECT_EQ(failures("wheel 1\nexpect wheel 1 10 2\n"), 1U);
    EXPECT_EQ(failures("press middle 1,1\nexpect swallow\n"), 1U);
}

} // namespace
} // namespace tarvik
