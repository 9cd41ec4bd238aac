// The small programs that Tarvik starts.
#pragma once

#include <QString>

namespace tarvik {

/// Where the program of this name is: beside Tarvik in the build tree, in the folder of libraries where it is
/// installed; nowhere else. Needs a QCoreApplication.
QString companionProgram(const QString& name);

} // namespace tarvik
