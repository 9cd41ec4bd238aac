// What the program that looks for updates has printed, read by a process that trusts it no further than the feed.
#pragma once

#include <QByteArray>
#include <QString>

namespace tarvik {

struct FeedReport {
    /// A sentence; empty when there is a version.
    QString failure;
    /// The newest version: the build number, which is compared, and what people call it.
    QString version;
    QString shortVersion;
    /// A page about it, over HTTPS; empty when there is none.
    QString page;
};

/// No report is longer, in bytes.
inline constexpr qsizetype longestFeedReport = 16'384;

/// Anything but a report is a failure. Texts are one line each and of limited length.
FeedReport readFeedReport(const QByteArray& printed);

} // namespace tarvik
