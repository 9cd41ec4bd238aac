#include "task_cost.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace tarvik {

TaskCost costOf(int pid) {
    TaskCost cost;
    const auto process = std::filesystem::path("/proc") / std::to_string(pid) / "task";
    for (const auto& thread : std::filesystem::directory_iterator(process)) {
        std::int64_t onProcessor = 0;
        std::ifstream(thread.path() / "schedstat") >> onProcessor;
        cost.cpu += onProcessor;
    }
    std::ifstream counts(process / std::to_string(pid) / "io");
    std::string name;
    for (std::int64_t value = 0; counts >> name >> value;) {
        if (name == "wchar:")
            cost.bytes = value;
        else if (name == "syscw:")
            cost.writes = value;
    }
    return cost;
}

} // namespace tarvik
