#include "platform/linux/x11/x11_main_connection.h"

#include <cstring>
#include <utility>

namespace tarvik {

X11MainConnection::X11MainConnection() : connection_(xcb_connect(nullptr, &screenNumber_)) {
    if (!ok())
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(get()));
    for (int i = 0; i < screenNumber_ && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    screen_ = screens.data;
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(get()), QSocketNotifier::Read);
    soon_.setSingleShot(true);
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { dispatch(); });
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { dispatch(); });
}

xcb_atom_t X11MainConnection::atom(const char* name) const {
    const auto cookie = xcb_intern_atom(get(), false, static_cast<std::uint16_t>(std::strlen(name)), name);
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool X11MainConnection::has(xcb_extension_t& extension) const {
    const auto* data = xcb_get_extension_data(get(), &extension);
    return data && data->present;
}

std::uint8_t X11MainConnection::firstEvent(xcb_extension_t& extension) const {
    return xcb_get_extension_data(get(), &extension)->first_event;
}

void X11MainConnection::watchRoot(std::uint32_t events, bool on) {
    rootEvents_ = on ? rootEvents_ | events : rootEvents_ & ~events;
    xcb_change_window_attributes(get(), screen().root, XCB_CW_EVENT_MASK, &rootEvents_);
}

std::shared_ptr<void> X11MainConnection::addHandler(EventHandler handler) {
    auto kept = std::make_shared<EventHandler>(std::move(handler));
    handlers_.push_back(kept);
    return kept;
}

void X11MainConnection::dispatchSoon() {
    if (notifier_)
        soon_.start();
}

void X11MainConnection::dispatch() {
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(get())}) {
        // By index: a handler may add another one.
        for (std::size_t i = 0; i < handlers_.size(); ++i) {
            if (const auto handler = handlers_[i].lock())
                (*handler)(*event);
        }
    }
    // A dead socket stays readable for ever.
    if (!ok())
        notifier_->setEnabled(false);
}

} // namespace tarvik
