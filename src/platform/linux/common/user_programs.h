// Programs that Tarvik starts for the user: a browser, a launcher. They belong to the session.
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

namespace tarvik {

/// Whether the session has a service manager (systemd's, of the user) that starts programs when it is asked to. What it
/// starts inherits nothing from who asks: a process that has given up gaining privileges may ask, and the terminal that
/// the user opens from a launcher can still become root. Answered once; needs no QCoreApplication.
bool sessionStartsPrograms();

/// Starts a program by its name, through the service manager where there is one, else as a child. False when it cannot
/// be started. Any thread.
bool startUserProgram(const QString& program, const QStringList& arguments = {});

/// Opens a page or a document in the program that the desktop has for it. False when there is none. Main thread.
bool openForUser(const QUrl& url);

} // namespace tarvik
