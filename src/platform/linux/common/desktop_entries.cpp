#include "platform/linux/common/desktop_entries.h"

#include "platform/linux/common/paths.h"
#include "platform/linux/common/text.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <utility>

namespace tarvik {
namespace {

namespace fs = std::filesystem;

// Far above what a system has; they bound the time that a strange folder can take.
constexpr std::size_t maxFileSize = 262'144;
constexpr std::size_t maxEntries = 20'000;
constexpr int maxDepth = 4;
constexpr std::string_view suffix = ".desktop";

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// The locale of messages, in the order of precedence that POSIX gives the variables.
std::string_view messagesLocale() {
    for (const auto* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const auto value = environment(name); !value.empty())
            return value == "C" || value == "POSIX" ? std::string_view() : value;
    }
    return {};
}

std::string contentsOf(const fs::path& file) {
    std::error_code unknown;
    const auto size = fs::file_size(file, unknown);
    std::ifstream in(file, std::ios::binary);
    std::string text(unknown ? 0 : std::min<std::uintmax_t>(size, maxFileSize), '\0');
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return text;
}

std::string idOf(const fs::path& file, const fs::path& folder) {
    auto id = file.lexically_relative(folder).generic_string();
    id.resize(id.size() - suffix.size());
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

std::string_view lastPart(std::string_view id) { return id.substr(id.find_last_of('.') + 1); }

} // namespace

std::shared_ptr<const DesktopEntries> DesktopEntries::load() {
    return std::make_shared<const DesktopEntries>(applicationFolders(), messagesLocale());
}

DesktopEntries::DesktopEntries(const std::vector<fs::path>& folders, std::string_view locale) {
    Index seen;
    for (const auto& folder : folders)
        readFolder(folder, locale, seen);
    buildIndexes();
}

void DesktopEntries::readFolder(const fs::path& folder, std::string_view locale, Index& seen) {
    std::error_code error;
    fs::recursive_directory_iterator it(
        folder, fs::directory_options::follow_directory_symlink | fs::directory_options::skip_permission_denied, error);
    for (; !error && it != fs::recursive_directory_iterator() && entries_.size() < maxEntries; it.increment(error)) {
        if (it.depth() >= maxDepth)
            it.disable_recursion_pending();
        const auto& path = it->path();
        std::error_code ignored;
        if (path.extension() != suffix || !it->is_regular_file(ignored))
            continue;
        const auto id = idOf(path, folder);
        if (!seen.emplace(id, 0).second)
            continue;
        if (auto entry = parseDesktopEntry(id, contentsOf(path), locale); entry && !entry->hidden)
            entries_.push_back(*std::move(entry));
    }
}

void DesktopEntries::buildIndexes() {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const auto& entry = entries_[i];
        byId_.emplace(entry.id, i);
        claim(byClaimedClass_, entry.startupWmClass, i);
        claim(byLowerId_, entry.id, i);
        claim(byLastPart_, lastPart(entry.id), i);
        claim(byProgram_, entry.program, i);
    }
}

/// The first entry keeps the key, unless it is one that menus do not show and the other one is shown.
void DesktopEntries::claim(Index& index, std::string_view key, std::size_t entry) {
    if (key.empty())
        return;
    const auto [place, added] = index.emplace(lowerCase(key), entry);
    if (!added && entries_[place->second].noDisplay && !entries_[entry].noDisplay)
        place->second = entry;
}

const DesktopEntry* DesktopEntries::find(const Index& index, std::string_view key) const {
    const auto place = key.empty() ? index.end() : index.find(lowerCase(key));
    return place == index.end() ? nullptr : &entries_[place->second];
}

const DesktopEntry* DesktopEntries::byId(std::string_view id) const {
    if (id.size() > suffix.size() && id.substr(id.size() - suffix.size()) == suffix)
        id.remove_suffix(suffix.size());
    const auto place = byId_.find(std::string(id));
    return place == byId_.end() ? nullptr : &entries_[place->second];
}

const DesktopEntry* DesktopEntries::byWmClass(std::string_view instance, std::string_view className) const {
    for (const auto* index : {&byClaimedClass_, &byLowerId_, &byLastPart_, &byProgram_}) {
        for (const auto name : {className, instance}) {
            if (const auto* entry = find(*index, name))
                return entry;
        }
    }
    return nullptr;
}

} // namespace tarvik
