#include <gtest/gtest.h>

/// What the Objective-C runtime keeps of its classes and selectors.
extern "C" const char* __lsan_default_suppressions() { return "leak:libobjc.so"; }

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
