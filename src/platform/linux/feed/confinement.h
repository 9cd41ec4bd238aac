// What the program that looks for updates cannot do, whoever may have taken it over.
#pragma once

#include <filesystem>
#include <vector>

namespace tarvik {

/// Keeps the calling thread and its later threads from gaining rights, from starting programs, from writing or creating
/// any file, and from reading any that is not the system's or below one of `readable` (files or folders): nothing in a
/// home can be sent anywhere. What they have open stays open, and the network stays open; memory, files at once and the
/// length of what they write are bounded. A kernel without Landlock does the second half only.
void confine(const std::vector<std::filesystem::path>& readable);

} // namespace tarvik
