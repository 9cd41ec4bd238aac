#include "platform/linux/feed/report.h"

#include "platform/linux/feed/appcast.h"

#include <QtCore/QStringList>

namespace tarvik {
namespace {

QStringList lines(const FeedAnswer& answer) {
    if (!answer.failure.isEmpty())
        return {"failed", answer.failure};
    const auto appcast = parseAppcast(answer.text);
    if (appcast.malformed)
        return {"failed", "The list of updates cannot be read."};
    if (!appcast.newest)
        return {"failed", "The list of updates has no version for Linux."};
    return {"newest", appcast.newest->version, appcast.newest->shortVersion, appcast.newest->page};
}

} // namespace

QByteArray reportOn(const FeedAnswer& answer) { return lines(answer).join('\n').toUtf8() + '\n'; }

} // namespace tarvik
