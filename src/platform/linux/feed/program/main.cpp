// Looks for updates, in a process of its own: what it takes to speak TLS and to read what a stranger wrote is not for
// the process that sees every click, nor for its memory.
//
//     tarvik-feed ADDRESS [CERTIFICATES]
//
// prints a report.
#include "platform/linux/feed/confinement.h"
#include "platform/linux/feed/feed_request.h"
#include "platform/linux/feed/report.h"
#include "platform/linux/feed/system_proxy.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibraryInfo>
#include <QtCore/QStringList>
#include <QtCore/QUrl>

#include <cstdio>

int main(int argc, char** argv) {
    using namespace tarvik;
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    const auto address = arguments.value(1);
    const auto certificates = arguments.value(2);
    useSystemProxy(QUrl(address));
    confine({QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString(),
             QLibraryInfo::path(QLibraryInfo::LibrariesPath).toStdString(), certificates.toStdString()});
    std::fputs(reportOn(fetchFeed(address, certificates)).constData(), stdout);
}
