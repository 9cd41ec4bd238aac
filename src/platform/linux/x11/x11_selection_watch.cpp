#include "platform/linux/x11/x11_selection_watch.h"

#include <xcb/xfixes.h>

#include <string>

namespace tarvik {

X11SelectionWatch::X11SelectionWatch(X11MainConnection& connection, const char* prefix, std::function<void()> changed)
    : connection_(connection), changed_(std::move(changed)) {
    if (!connection_.ok())
        return;
    auto* const xcb = connection_.get();
    selection_ = connection_.atom((prefix + std::to_string(connection_.screenNumber())).c_str());
    if (connection_.has(xcb_xfixes_id)) {
        const XcbReply<xcb_xfixes_query_version_reply_t> version(
            xcb_xfixes_query_version_reply(xcb, xcb_xfixes_query_version(xcb, 5, 0), nullptr));
        xcb_xfixes_select_selection_input(xcb, connection_.screen().root, selection_,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
        events_ = connection_.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    }
    const XcbReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, selection_), nullptr));
    owned_ = owner && owner->owner != XCB_NONE;
    connection_.dispatchSoon();
}

void X11SelectionWatch::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != connection_.firstEvent(xcb_xfixes_id) + XCB_XFIXES_SELECTION_NOTIFY)
        return;
    const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notice.selection != selection_)
        return;
    owned_ = notice.owner != XCB_NONE;
    changed_();
}

} // namespace tarvik
