// The framework in which the Dock's function is looked up. The linker puts these in the place of the real functions.
#include "macos/sim/world.h"

#include <cstring>

using namespace tarvik::sim;

extern "C" {

int simulatedDockFunction(CFStringRef name, int unused) {
    world().dockNotifications.push_back(textOf(name) + " " + std::to_string(unused));
    return 0;
}

void* __wrap_dlopen(const char* path, int mode) {
    world().opened.push_back(std::string(path) + " " + std::to_string(mode));
    return &world();
}

void* __wrap_dlsym(void* image, const char* symbol) {
    world().opened.emplace_back(symbol);
    const bool known = image == &world() && std::strcmp(symbol, "CoreDockSendNotification") == 0;
    return known ? reinterpret_cast<void*>(simulatedDockFunction) : nullptr;
}

} // extern "C"
