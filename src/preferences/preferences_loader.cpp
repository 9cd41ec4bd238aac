#include "preferences/preferences_module.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace tarvik {
namespace {

/// Beside the program in the build tree, in the folder of libraries where it is installed; nowhere else.
QString moduleFile() {
    const QDir programs(QCoreApplication::applicationDirPath());
    for (const auto* folder : {".", TARVIK_MODULE_FOLDER}) {
        const QFileInfo file(programs, QString::fromUtf8(folder) + '/' + TARVIK_PREFERENCES_MODULE);
        if (file.isFile())
            return file.canonicalFilePath();
    }
    return {};
}

} // namespace

std::unique_ptr<PreferencesWindow> loadPreferencesWindow(const PreferencesContext& context, LogSink& log) {
    QLibrary module(moduleFile());
    if (module.fileName().isEmpty()) {
        log.write("the preferences window is not installed (" TARVIK_PREFERENCES_MODULE ")");
        return nullptr;
    }
    const auto make = reinterpret_cast<PreferencesModuleEntry>(module.resolve(TARVIK_PREFERENCES_ENTRY_NAME));
    if (!make) {
        log.write("the preferences window cannot be loaded: " + module.errorString().toStdString());
        return nullptr;
    }
    return std::unique_ptr<PreferencesWindow>(make(context, log));
}

} // namespace tarvik
