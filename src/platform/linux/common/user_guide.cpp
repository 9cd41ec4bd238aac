#include "platform/linux/common/user_guide.h"

#include "platform/linux/common/user_programs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace tarvik {

void openUserGuide(LogSink& log) {
    const QDir programs(QCoreApplication::applicationDirPath());
    for (const auto* folder : {"doc", TARVIK_DOC_FOLDER}) {
        const QFileInfo guide(programs, QString::fromUtf8(folder) + "/using.md");
        if (!guide.isFile())
            continue;
        if (!openForUser(QUrl::fromLocalFile(guide.canonicalFilePath())))
            log.write("the user's guide cannot be opened: " + guide.canonicalFilePath().toStdString());
        return;
    }
    log.write("the user's guide is not installed");
}

} // namespace tarvik
