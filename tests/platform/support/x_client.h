// An ordinary application on the desktop, as far as the desktop can tell.
#pragma once

#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_ewmh.h"
#include "support/geometry.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvik {

struct KeySeen {
    bool down = false;
    unsigned long symbol = 0;
    /// Modifier state before the event, without Lock and Num Lock.
    unsigned state = 0;
    friend bool operator==(const KeySeen&, const KeySeen&) = default;
};

struct ClientWindow {
    std::string instance = "tester";
    std::string className = "Tester";
    Rect frame = {100, 100, 300, 200};
    /// Set before the window is mapped; 0 leaves them out.
    Atom type = None;
    Atom state = None;
};

class XClient {
public:
    XClient();
    ~XClient();

    const X11Connection& connection() const { return *x_; }
    const X11Ewmh& ewmh() const { return ewmh_; }
    const X11Atoms& atoms() const { return x_->atoms(); }

    /// Opens a window and waits until the window manager has taken it; then it is the active one (unless of a type that
    /// is never active).
    XWindow open(const ClientWindow& how = {});
    void destroy(XWindow window);
    void setText(XWindow window, const char* property, const std::string& text);
    /// The keys that the client's windows received since the last call, once `count` events are there or after five
    /// seconds.
    std::vector<KeySeen> keys(std::size_t count);
    /// How often the window was asked to close.
    int closeRequests(XWindow window);
    /// Waits until the window manager says that the window is active.
    bool becomesActive(XWindow window);
    /// Makes the window the active one and waits for it.
    bool activate(XWindow window);

private:
    void readEvents();

    const std::unique_ptr<X11Connection> x_;
    const X11Ewmh ewmh_;
    const Atom protocols_;
    const Atom deleteWindow_;
    std::vector<KeySeen> keys_;
    std::vector<XWindow> closeRequests_;
};

} // namespace tarvik
