// The main thread's own connection to the X server, served by the toolkit's event loop.
#pragma once

#include <QSocketNotifier>
#include <QTimer>

#include <xcb/xcb.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace tarvik {

/// Replies and events of XCB come from malloc.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T> using XcbReply = std::unique_ptr<T, XcbFree>;

/// Main thread; needs a running QCoreApplication. XCB reports errors as replies and events, so that a request about
/// something that has vanished ends nothing. When the server cannot be reached `ok()` is false and requests do nothing;
/// the toolkit, which has lost the same server, decides what becomes of the process.
class X11MainConnection {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    /// Connects to the server that DISPLAY names.
    X11MainConnection();
    X11MainConnection(const X11MainConnection&) = delete;
    X11MainConnection& operator=(const X11MainConnection&) = delete;

    bool ok() const { return xcb_connection_has_error(get()) == 0; }
    xcb_connection_t* get() const { return connection_.get(); }
    /// Of the default screen; only when `ok()`.
    const xcb_screen_t& screen() const { return *screen_; }
    int screenNumber() const { return screenNumber_; }

    xcb_atom_t atom(const char* name) const;
    /// The first event code of an extension that the server has.
    std::uint8_t firstEvent(xcb_extension_t& extension) const;
    bool has(xcb_extension_t& extension) const;

    /// Begins or ends hearing of these events of the root window (XCB_EVENT_MASK_...). Each kind has one user.
    void watchRoot(std::uint32_t events, bool on);
    /// Every event goes to every handler, for as long as what is returned lives.
    [[nodiscard]] std::shared_ptr<void> addHandler(EventHandler handler);
    void flush() const { xcb_flush(get()); }
    /// After waiting for a reply: events that came with it have left the socket and would go unnoticed.
    void dispatchSoon();

private:
    void dispatch();

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    int screenNumber_ = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    const xcb_screen_t* screen_ = nullptr;
    std::uint32_t rootEvents_ = XCB_EVENT_MASK_NO_EVENT;
    std::vector<std::weak_ptr<EventHandler>> handlers_;
    std::unique_ptr<QSocketNotifier> notifier_;
    QTimer soon_;
};

} // namespace tarvik
