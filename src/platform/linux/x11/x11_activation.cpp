#include "platform/linux/x11/x11_activation.h"

#include "platform/linux/x11/x11_main_connection.h"
#include "platform/linux/x11/x11_toolkit.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstring>

namespace tarvik {
namespace {

xcb_atom_t activeWindowAtom(xcb_connection_t* xcb) {
    constexpr std::string_view name = "_NET_ACTIVE_WINDOW";
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(xcb, xcb_intern_atom(xcb, false, name.size(), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

void X11Activation::activate() {
    // The toolkit's own connection: the window manager must hear of a new window first.
    auto* const xcb = toolkitConnection();
    if (!xcb)
        return;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const auto atom = activeWindowAtom(xcb);
    for (const auto* window : QGuiApplication::topLevelWindows()) {
        if (!window->isVisible() || window->flags().testFlag(Qt::BypassWindowManagerHint) ||
            window->type() == Qt::Popup || window->type() == Qt::ToolTip)
            continue;
        constexpr std::uint32_t fromTheUser = 2;
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = static_cast<xcb_window_t>(window->winId());
        message.type = atom;
        message.data.data32[0] = fromTheUser;
        message.data.data32[1] = XCB_CURRENT_TIME;
        xcb_send_event(xcb, false, root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
    }
    xcb_flush(xcb);
}

} // namespace tarvik
