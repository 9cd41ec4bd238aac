// Fetching the update feed from a server that is not trusted further than its certificate.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>

namespace tarvik {

struct FeedAnswer {
    QByteArray text;
    /// What went wrong, as a sentence; empty when the text is there.
    QString failure;
};

struct FeedLimits {
    qint64 bytes = 1'000'000;
    int redirects = 5;
    /// For everything together.
    std::chrono::milliseconds time = std::chrono::seconds(30);
};

/// HTTPS only, across redirects too. `certificates` is a file of authorities to be trusted besides the system's; empty
/// for none. Needs a QCoreApplication; returns when the answer is there.
FeedAnswer fetchFeed(const QString& address, const QString& certificates, const FeedLimits& limits = {});

} // namespace tarvik
