#include "platform/linux/common/recent_ends.h"

#include <algorithm>
#include <charconv>

namespace tarvik {
namespace {

using std::chrono::milliseconds;

constexpr std::chrono::minutes memory(1);
constexpr milliseconds firstPause(250);
/// Thirty years: no machine runs for longer, and what is far beyond cannot be counted.
constexpr milliseconds::rep latest = 1'000'000'000'000;

} // namespace

RecentEnds RecentEnds::parse(std::string_view text) {
    RecentEnds result;
    while (!text.empty()) {
        const auto part = text.substr(0, text.find(','));
        text.remove_prefix(std::min(part.size() + 1, text.size()));
        milliseconds::rep time = 0;
        // Letter and number, such as T123456.
        const bool read =
            part.size() > 1 && std::from_chars(part.data() + 1, part.data() + part.size(), time).ec == std::errc();
        if (read && time >= 0 && time <= latest)
            result.add({Time(milliseconds(time)), part.front()});
    }
    return result;
}

std::string RecentEnds::text() const {
    std::string result;
    for (const auto& end : ends_) {
        if (!result.empty())
            result += ',';
        const auto time = std::chrono::duration_cast<milliseconds>(end.time.time_since_epoch());
        result += end.state + std::to_string(time.count());
    }
    return result;
}

void RecentEnds::add(const End& end) {
    ends_.erase(std::remove_if(ends_.begin(), ends_.end(),
                               [&end](const End& earlier) { return end.time - earlier.time >= memory; }),
                ends_.end());
    ends_.push_back(end);
}

milliseconds RecentEnds::pause() const {
    auto pause = firstPause;
    for (std::size_t i = 1; i < ends_.size(); ++i)
        pause *= 4;
    return pause;
}

} // namespace tarvik
