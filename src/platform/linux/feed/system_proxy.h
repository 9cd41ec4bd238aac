// The way out that the desktop and the environment name.
#pragma once

#include <QtCore/QUrl>

namespace tarvik {

/// Finds out how to reach the address, and keeps to it, across redirects, too. It is asked in a process that ends with
/// the answer: those who know may read the user's settings, start programs and leave threads behind, which a
/// confinement of the caller would not reach. Needs a QCoreApplication and no other thread. No answer within ten
/// seconds is no proxy.
void useSystemProxy(const QUrl& address);

} // namespace tarvik
