#include "platform/linux/common/companion_program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tarvik {

QString companionProgram(const QString& name) {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QFileInfo beside(programs, name);
    return (beside.isFile() ? beside : QFileInfo(programs, TARVIK_LIBRARY_FOLDER "/" + name)).absoluteFilePath();
}

} // namespace tarvik
