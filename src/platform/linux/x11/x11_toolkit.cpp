#include "platform/linux/x11/x11_toolkit.h"

#include "platform/linux/x11/x11_main_connection.h"

#include <QGuiApplication>
#include <QScreen>

#include <X11/XKBlib.h>

namespace tarvik {
namespace {

void declineCrossings(xcb_connection_t* xcb) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, root), nullptr));
    if (!attributes)
        return;
    constexpr std::uint32_t crossings = XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
    const std::uint32_t rest = attributes->your_event_mask & ~crossings;
    xcb_change_window_attributes(xcb, root, XCB_CW_EVENT_MASK, &rest);
}

void declineButtonStates(Display* display) {
    int version[2] = {XkbMajorVersion, XkbMinorVersion};
    if (XkbQueryExtension(display, nullptr, nullptr, nullptr, &version[0], &version[1]))
        XkbSelectEventDetails(display, XkbUseCoreKbd, XkbStateNotify, XkbPointerButtonMask, 0);
}

QNativeInterface::QX11Application* toolkit() {
    return qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
}

} // namespace

xcb_connection_t* toolkitConnection() {
    auto* const xcb = toolkit() ? toolkit()->connection() : nullptr;
    return xcb && xcb_connection_has_error(xcb) == 0 ? xcb : nullptr;
}

X11QuietToolkit::X11QuietToolkit() {
    const auto decline = [] {
        if (auto* const xcb = toolkitConnection()) {
            declineCrossings(xcb);
            declineButtonStates(toolkit()->display());
            XFlush(toolkit()->display());
        }
    };
    decline();
    // For each screen the toolkit selects its events of the root window anew.
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context_, decline);
}

} // namespace tarvik
