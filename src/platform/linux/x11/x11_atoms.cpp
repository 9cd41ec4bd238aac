#include "platform/linux/x11/x11_atoms.h"

#include <iterator>

namespace tarvik {
namespace {

struct Row {
    const char* name;
    Atom X11Atoms::*member;
};

constexpr Row rows[] = {
    {"UTF8_STRING", &X11Atoms::utf8String},
    {"WM_STATE", &X11Atoms::wmState},
    {"WM_CHANGE_STATE", &X11Atoms::wmChangeState},
    {"_NET_SUPPORTED", &X11Atoms::supported},
    {"_NET_SUPPORTING_WM_CHECK", &X11Atoms::supportingWmCheck},
    {"_NET_CLIENT_LIST", &X11Atoms::clientList},
    {"_NET_CLIENT_LIST_STACKING", &X11Atoms::clientListStacking},
    {"_NET_ACTIVE_WINDOW", &X11Atoms::activeWindow},
    {"_NET_CURRENT_DESKTOP", &X11Atoms::currentDesktop},
    {"_NET_NUMBER_OF_DESKTOPS", &X11Atoms::numberOfDesktops},
    {"_NET_DESKTOP_LAYOUT", &X11Atoms::desktopLayout},
    {"_NET_SHOWING_DESKTOP", &X11Atoms::showingDesktop},
    {"_NET_CLOSE_WINDOW", &X11Atoms::closeWindow},
    {"_NET_FRAME_EXTENTS", &X11Atoms::frameExtents},
    {"_NET_WM_DESKTOP", &X11Atoms::wmDesktop},
    {"_NET_WM_PID", &X11Atoms::wmPid},
    {"_NET_WM_ALLOWED_ACTIONS", &X11Atoms::wmAllowedActions},
    {"_NET_WM_ACTION_MINIMIZE", &X11Atoms::actionMinimize},
    {"_NET_WM_ACTION_FULLSCREEN", &X11Atoms::actionFullScreen},
    {"_NET_WM_STATE", &X11Atoms::wmStateList},
    {"_NET_WM_STATE_FULLSCREEN", &X11Atoms::stateFullScreen},
    {"_NET_WM_STATE_HIDDEN", &X11Atoms::stateHidden},
    {"_NET_WM_STATE_ABOVE", &X11Atoms::stateAbove},
    {"_NET_WM_STATE_BELOW", &X11Atoms::stateBelow},
    {"_NET_WM_STATE_SKIP_TASKBAR", &X11Atoms::stateSkipTaskbar},
    {"_NET_WM_WINDOW_TYPE", &X11Atoms::windowType},
    {"_NET_WM_WINDOW_TYPE_DESKTOP", &X11Atoms::typeDesktop},
    {"_NET_WM_WINDOW_TYPE_DOCK", &X11Atoms::typeDock},
    {"_NET_WM_WINDOW_TYPE_NORMAL", &X11Atoms::typeNormal},
    {"_NET_WM_WINDOW_TYPE_DIALOG", &X11Atoms::typeDialog},
    {"_GTK_APPLICATION_ID", &X11Atoms::gtkApplicationId},
    {"_GTK_FRAME_EXTENTS", &X11Atoms::gtkFrameExtents},
    {"_KDE_NET_WM_DESKTOP_FILE", &X11Atoms::kdeDesktopFile},
    {"XTEST Device", &X11Atoms::xtestDevice},
};

} // namespace

X11Atoms::X11Atoms(Display* display) {
    constexpr auto count = std::size(rows);
    char* names[count];
    for (std::size_t i = 0; i < count; ++i)
        names[i] = const_cast<char*>(rows[i].name); // Xlib does not write to them
    Atom atoms[count] = {};
    XInternAtoms(display, names, count, False, atoms);
    for (std::size_t i = 0; i < count; ++i)
        this->*rows[i].member = atoms[i];
}

} // namespace tarvik
