// The toolkit's own connection to the X server.
#pragma once

#include <QObject>

#include <xcb/xcb.h>

namespace tarvik {

/// Main thread. Nothing when there is no QGuiApplication on X11, or its server has gone.
xcb_connection_t* toolkitConnection();

/// Main thread, for as long as the QGuiApplication lives. The toolkit asks the server for events of every click on the
/// desktop, wherever it goes, and has no use for them: crossings of the root window, which each grab of a button makes,
/// and the keyboard's state when a mouse button changes it. They would wake two threads at each click, at the same time
/// as the tap. This takes them back.
class X11QuietToolkit {
public:
    X11QuietToolkit();

private:
    QObject context_;
};

} // namespace tarvik
