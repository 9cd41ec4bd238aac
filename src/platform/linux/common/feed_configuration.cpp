#include "platform/linux/common/feed_configuration.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tarvik {
namespace {

/// Beside the program in the build tree, in the folder of libraries where it is installed; nowhere else.
QString feedProgram() {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QFileInfo beside(programs, "tarvik-feed");
    return (beside.isFile() ? beside : QFileInfo(programs, TARVIK_LIBRARY_FOLDER "/tarvik-feed")).absoluteFilePath();
}

} // namespace

std::optional<FeedSource> configuredFeed() {
    const QString address = TARVIK_FEED_URL;
    if (address.isEmpty())
        return std::nullopt;
    return FeedSource{feedProgram(), address, TARVIK_FEED_CA, TARVIK_BUILD, TARVIK_VERSION};
}

} // namespace tarvik
