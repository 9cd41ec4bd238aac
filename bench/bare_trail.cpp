// The least that a line behind the pointer costs: while the right button is held, every movement that the server
// reports becomes one line in a window of our own, with no engine, no mask, no other thread. What bench/trail_pixels
// measures of Tarvik's trail is compared with this.
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/shape.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int button = 3;
constexpr unsigned lineWidth = 5;
constexpr unsigned long paper = 0xFFFFFF;
constexpr unsigned long ink = 0x1A5FB4;

class BareTrail {
public:
    explicit BareTrail(Display* display)
        : display_(display), root_(DefaultRootWindow(display)), window_(makeWindow()), context_(makeContext()) {
        int event = 0;
        int error = 0;
        XQueryExtension(display_, "XInputExtension", &extension_, &event, &error);
        grab();
    }

    [[noreturn]] void run() {
        for (;;) {
            if (XPending(display_) == 0)
                XFlush(display_);
            XEvent event;
            XNextEvent(display_, &event);
            if (event.xcookie.type == GenericEvent && event.xcookie.extension == extension_ &&
                XGetEventData(display_, &event.xcookie)) {
                handle(*static_cast<XIDeviceEvent*>(event.xcookie.data));
                XFreeEventData(display_, &event.xcookie);
            }
        }
    }

private:
    Window makeWindow() {
        XSetWindowAttributes attributes{};
        attributes.background_pixel = paper;
        attributes.override_redirect = True;
        const Window window = XCreateWindow(display_, root_, 0, 0, static_cast<unsigned>(DisplayWidth(display_, 0)),
                                            static_cast<unsigned>(DisplayHeight(display_, 0)), 0, CopyFromParent,
                                            InputOutput, nullptr, CWBackPixel | CWOverrideRedirect, &attributes);
        XShapeCombineRectangles(display_, window, ShapeInput, 0, 0, nullptr, 0, ShapeSet, Unsorted);
        XMapRaised(display_, window);
        return window;
    }

    GC makeContext() {
        XGCValues values{};
        values.foreground = ink;
        values.line_width = lineWidth;
        values.cap_style = CapRound;
        return XCreateGC(display_, window_, GCForeground | GCLineWidth | GCCapStyle, &values);
    }

    void grab() {
        std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits{};
        for (const int type : {XI_ButtonPress, XI_ButtonRelease, XI_Motion})
            XISetMask(bits.data(), type);
        XIEventMask mask{XIAllMasterDevices, static_cast<int>(bits.size()), bits.data()};
        XIGrabModifiers any{static_cast<int>(XIAnyModifier), 0};
        XIGrabButton(display_, XIAllMasterDevices, button, root_, None, XIGrabModeAsync, XIGrabModeAsync, False, &mask,
                     1, &any);
    }

    void handle(const XIDeviceEvent& event) {
        const int x = static_cast<int>(event.root_x);
        const int y = static_cast<int>(event.root_y);
        if (event.evtype == XI_Motion)
            XDrawLine(display_, window_, context_, x_, y_, x, y);
        else if (event.evtype == XI_ButtonRelease)
            XClearWindow(display_, window_);
        x_ = x;
        y_ = y;
    }

    Display* const display_;
    const Window root_;
    const Window window_;
    GC context_;
    int extension_ = 0;
    int x_ = 0;
    int y_ = 0;
};

} // namespace

int main() {
    Display* const display = XOpenDisplay(nullptr);
    if (!display)
        return EXIT_FAILURE;
    BareTrail trail(display);
    XSync(display, False);
    std::puts("ready");
    std::fflush(stdout);
    trail.run();
}
