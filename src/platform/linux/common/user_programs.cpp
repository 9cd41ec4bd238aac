#include "platform/linux/common/user_programs.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>

#include <sys/stat.h>

namespace tarvik {
namespace {

constexpr int patience = 5000; // milliseconds

/// What the service manager may not know: it is older than the session, and there may be several sessions.
constexpr const char* sessionVariables[] = {"DISPLAY",
                                            "XAUTHORITY",
                                            "DBUS_SESSION_BUS_ADDRESS",
                                            "XDG_CURRENT_DESKTOP",
                                            "DESKTOP_SESSION",
                                            "PATH",
                                            "XDG_DATA_DIRS",
                                            "XDG_CONFIG_DIRS",
                                            "LANG"};

QString serviceStarter() {
    const auto folder = qgetenv("XDG_RUNTIME_DIR");
    struct stat socket = {};
    return !folder.isEmpty() && stat((folder + "/systemd/private").constData(), &socket) == 0 &&
                   S_ISSOCK(socket.st_mode)
               ? QStandardPaths::findExecutable("systemd-run")
               : QString();
}

bool startAsService(const QString& program, const QStringList& arguments) {
    // What the program itself leaves running, a browser for instance, goes on when it ends.
    QStringList words = {"--user", "--quiet", "--collect", "--property=KillMode=process"};
    for (const auto* name : sessionVariables) {
        if (qEnvironmentVariableIsSet(name))
            words << QStringLiteral("--setenv=%1=%2").arg(QString::fromLatin1(name), qEnvironmentVariable(name));
    }
    QProcess starter;
    starter.start(serviceStarter(), words + QStringList{"--", program} + arguments);
    return starter.waitForFinished(patience) && starter.exitStatus() == QProcess::NormalExit && starter.exitCode() == 0;
}

} // namespace

bool sessionStartsPrograms() {
    static const bool answer = !serviceStarter().isEmpty();
    return answer;
}

bool startUserProgram(const QString& program, const QStringList& arguments) {
    return (sessionStartsPrograms() && startAsService(program, arguments)) ||
           QProcess::startDetached(program, arguments);
}

bool openForUser(const QUrl& url) {
    return (sessionStartsPrograms() && startAsService("xdg-open", {url.toString(QUrl::FullyEncoded)})) ||
           QDesktopServices::openUrl(url);
}

} // namespace tarvik
