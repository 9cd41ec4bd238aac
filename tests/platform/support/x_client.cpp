#include "platform/support/x_client.h"

#include "platform/support/eventually.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tarvik {
namespace {

std::unique_ptr<X11Connection> connect() {
    auto x = X11Connection::open();
    if (!x)
        throw std::runtime_error("no display");
    return x;
}

} // namespace

XClient::XClient()
    : x_(connect())
    , ewmh_(*x_)
    , protocols_(XInternAtom(x_->display(), "WM_PROTOCOLS", False))
    , deleteWindow_(XInternAtom(x_->display(), "WM_DELETE_WINDOW", False)) {}

XClient::~XClient() = default;

XWindow XClient::open(const ClientWindow& how) {
    auto* display = x_->display();
    const auto window = XCreateSimpleWindow(display, x_->root(), static_cast<int>(how.frame.x),
                                            static_cast<int>(how.frame.y), static_cast<unsigned>(how.frame.width),
                                            static_cast<unsigned>(how.frame.height), 0, 0, 0x336699);
    XSelectInput(display, window, KeyPressMask | KeyReleaseMask | FocusChangeMask);
    auto instance = how.instance;
    auto className = how.className;
    XClassHint hint = {instance.data(), className.data()};
    if (!className.empty())
        XSetClassHint(display, window, &hint);
    XSizeHints size = {};
    size.flags = USPosition | USSize;
    XSetWMNormalHints(display, window, &size);
    auto deleteWindow = deleteWindow_;
    XSetWMProtocols(display, window, &deleteWindow, 1);
    const auto setAtom = [&](Atom property, Atom value) {
        if (value != None)
            XChangeProperty(display, window, property, XA_ATOM, 32, PropModeReplace,
                            reinterpret_cast<const unsigned char*>(&value), 1);
    };
    setAtom(atoms().windowType, how.type);
    setAtom(atoms().wmStateList, how.state);
    XMapWindow(display, window);
    XFlush(display);
    const bool isActive = how.type == None || how.type == atoms().typeNormal || how.type == atoms().typeDialog;
    const bool managed = eventually([&] {
        const auto clients = ewmh_.clients();
        return std::find(clients.begin(), clients.end(), window) != clients.end() && ewmh_.isViewable(window);
    });
    if (!managed || (isActive && !activate(window)))
        throw std::runtime_error("the window manager did not take the window");
    return window;
}

void XClient::destroy(XWindow window) {
    XDestroyWindow(x_->display(), window);
    XSync(x_->display(), False);
    eventually([&] {
        const auto clients = ewmh_.clients();
        return std::find(clients.begin(), clients.end(), window) == clients.end();
    });
}

void XClient::setText(XWindow window, const char* property, const std::string& text) {
    XChangeProperty(x_->display(), window, XInternAtom(x_->display(), property, False), atoms().utf8String, 8,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(text.data()),
                    static_cast<int>(text.size()));
    XSync(x_->display(), False);
}

std::vector<KeySeen> XClient::keys(std::size_t count) {
    eventually([&] {
        readEvents();
        return keys_.size() >= count;
    });
    return std::exchange(keys_, {});
}

int XClient::closeRequests(XWindow window) {
    readEvents();
    return static_cast<int>(std::count(closeRequests_.begin(), closeRequests_.end(), window));
}

bool XClient::becomesActive(XWindow window) {
    return eventually([&] { return ewmh_.activeWindow() == window; });
}

bool XClient::activate(XWindow window) {
    if (ewmh_.activeWindow() != window)
        ewmh_.activate(window);
    // The keys go where the focus is, which may follow the announcement.
    return becomesActive(window) && eventually([&] {
               XWindow focus = None;
               int revert = 0;
               XGetInputFocus(x_->display(), &focus, &revert);
               return focus == window;
           });
}

void XClient::readEvents() {
    while (XPending(x_->display()) > 0) {
        XEvent event;
        XNextEvent(x_->display(), &event);
        if (event.type == MappingNotify) {
            XRefreshKeyboardMapping(&event.xmapping);
        } else if (event.type == KeyPress || event.type == KeyRelease) {
            keys_.push_back({event.type == KeyPress, XLookupKeysym(&event.xkey, 0),
                             event.xkey.state & (ShiftMask | ControlMask | Mod1Mask | Mod4Mask)});
        } else if (event.type == ClientMessage && event.xclient.message_type == protocols_ &&
                   static_cast<Atom>(event.xclient.data.l[0]) == deleteWindow_) {
            closeRequests_.push_back(event.xclient.window);
        }
    }
}

} // namespace tarvik
