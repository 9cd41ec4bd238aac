// The update feed: any text is refused or has a newest version, what one process prints of it the other one reads, and
// whatever is printed, what is shown is a line and what is opened is a page over HTTPS.
#include "platform/linux/common/feed_report.h"
#include "platform/linux/feed/appcast.h"
#include "platform/linux/feed/report.h"
#include "require.h"
#include "support/version_order.h"

#include <cstdint>
#include <string>

namespace tarvik {
namespace {

using fuzz::isLine;
using fuzz::require;

bool isPage(const QString& address) {
    const auto bytes = address.toStdString();
    return bytes.empty() ||
           (bytes.starts_with("https://") && bytes.size() > 8 && isLine(bytes) && bytes.find(' ') == std::string::npos);
}

void requireFit(const FeedReport& report) {
    require(report.failure.isEmpty() != report.version.isEmpty(), "neither a failure nor a version, or both");
    for (const auto& text : {report.failure, report.version, report.shortVersion})
        require(isLine(text.toStdString()) && text.size() <= 800, "what is no line");
    require(report.failure.isEmpty() == !report.shortVersion.isEmpty(), "a version without a name");
    require(isPage(report.page), "a page that is not secure");
}

void feed(const QByteArray& text) {
    const auto appcast = parseAppcast(text);
    require(!appcast.malformed || !appcast.newest, "a version out of a text that is no feed");
    require(!parseAppcast("<!DOCTYPE rss [<!ENTITY a 'b'>]>" + text).newest, "a feed that declares a document type");
    const auto report = readFeedReport(reportOn({text, {}}));
    requireFit(report);
    // Directions of writing and such have become blanks, and a version of nothing else is none.
    if (appcast.newest && !report.version.isEmpty())
        require(report.page == appcast.newest->page, "another page was read than was printed");
    require(appcast.newest || !report.failure.isEmpty(), "a version out of nowhere");
}

void versions(std::string_view bytes) {
    const auto first = bytes.substr(0, bytes.find('\n'));
    const auto second = bytes.substr(std::min(first.size() + 1, bytes.size()));
    require(compareVersions(first, first) == 0, "a version that is newer than itself");
    require(compareVersions(first, second) == 0 <=> compareVersions(second, first),
            "two that are newer than each other");
}

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    tarvik::feed(bytes);
    tarvik::requireFit(tarvik::readFeedReport(bytes));
    tarvik::requireFit(tarvik::readFeedReport("newest\n" + bytes));
    tarvik::versions({bytes.constData(), size});
    return 0;
}
