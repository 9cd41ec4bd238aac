#include "platform/linux/common/feed_report.h"

#include "support/printable.h"

#include <QUrl>

namespace tarvik {
namespace {

constexpr std::size_t longestText = 800; // bytes

QString text(const QByteArray& line) {
    const std::string_view bytes(line.data(), static_cast<std::size_t>(line.size()));
    return QString::fromStdString(printable(bytes, longestText)).trimmed();
}

QString securePage(const QByteArray& line) {
    const QUrl url(QString::fromUtf8(line), QUrl::StrictMode);
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty()
               ? url.toString(QUrl::FullyEncoded)
               : QString();
}

} // namespace

FeedReport readFeedReport(const QByteArray& printed) {
    FeedReport report;
    const auto lines = printed.size() > longestFeedReport ? QByteArrayList() : printed.split('\n');
    if (lines.value(0) == "newest" && lines.size() >= 4) {
        report.version = text(lines[1]);
        report.shortVersion = text(lines[2]);
        if (report.shortVersion.isEmpty())
            report.shortVersion = report.version;
        report.page = securePage(lines[3]);
    } else if (lines.value(0) == "failed" && lines.size() >= 2) {
        report.failure = text(lines[1]);
    }
    if (report.version.isEmpty() && report.failure.isEmpty())
        return {.failure = "Updates cannot be looked for."};
    return report;
}

} // namespace tarvik
