// Looks for updates, in a process of its own: what it takes to speak TLS and to read what a stranger wrote is not for
// the process that sees every click, nor for its memory.
//
//     tarvik-feed ADDRESS [CERTIFICATES]
//
// prints "newest", the version, what people call it, and the address of a page about it, or "failed" and a sentence,
// each on a line of its own.
#include "platform/linux/feed/appcast.h"
#include "platform/linux/feed/feed_request.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <cstdio>

namespace {

QStringList result(const QStringList& arguments) {
    using namespace tarvik;
    const auto answer = fetchFeed(arguments.value(1), arguments.value(2));
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

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    std::puts(result(QCoreApplication::arguments()).join('\n').toUtf8().constData());
}
