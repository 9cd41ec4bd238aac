// The names that the adapters use in their talk with window managers and applications.
#pragma once

#include <X11/Xlib.h>

namespace tarvik {

/// Atoms of one server, fetched in one round trip. The names are in x11_atoms.cpp; they come from the ICCCM and from
/// the Extended Window Manager Hints 1.5, those of _GTK and _KDE from what the toolkits
/// set, that of XTEST from the server.
struct X11Atoms {
    explicit X11Atoms(Display* display);

    Atom utf8String = 0;
    Atom wmState = 0;
    Atom wmChangeState = 0;

    Atom supported = 0;
    Atom supportingWmCheck = 0;
    Atom clientList = 0;
    Atom clientListStacking = 0;
    Atom activeWindow = 0;
    Atom currentDesktop = 0;
    Atom numberOfDesktops = 0;
    Atom desktopLayout = 0;
    Atom showingDesktop = 0;
    Atom closeWindow = 0;
    Atom frameExtents = 0;
    Atom wmDesktop = 0;
    Atom wmPid = 0;

    Atom wmAllowedActions = 0;
    Atom actionMinimize = 0;
    Atom actionFullScreen = 0;

    Atom wmStateList = 0;
    Atom stateFullScreen = 0;
    Atom stateHidden = 0;
    Atom stateAbove = 0;
    Atom stateBelow = 0;
    Atom stateSkipTaskbar = 0;

    Atom windowType = 0;
    Atom typeDesktop = 0;
    Atom typeDock = 0;
    Atom typeNormal = 0;
    Atom typeDialog = 0;

    Atom gtkApplicationId = 0;
    Atom gtkFrameExtents = 0;
    Atom kdeDesktopFile = 0;
    Atom xtestDevice = 0;
};

} // namespace tarvik
