#include "platform/linux/x11/x11_screens.h"

#include <QGuiApplication>
#include <QScreen>

#include <xcb/randr.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace tarvik {

namespace {

/// The number at the start of the text, in the "C" notation whatever the locale; 0 when there is none.
double leadingNumber(std::string_view text) {
    const auto end = text.find_first_not_of("0123456789. \t");
    return QByteArray(text.data(), static_cast<qsizetype>(std::min(end, text.size()))).trimmed().toDouble();
}

double xftDpi(std::string_view resources) {
    static constexpr std::string_view name = "Xft.dpi:";
    for (std::size_t line = 0; line < resources.size();) {
        const auto end = std::min(resources.find('\n', line), resources.size());
        if (const auto text = resources.substr(line, end - line); text.substr(0, name.size()) == name)
            return leadingNumber(text.substr(name.size()));
        line = end + 1;
    }
    return 0;
}

std::string resourceManager(const X11MainConnection& connection) {
    constexpr std::uint32_t limit = 65536 / 4;
    auto* const xcb = connection.get();
    const auto cookie =
        xcb_get_property(xcb, false, connection.screen().root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, limit);
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

QString atomName(xcb_connection_t* xcb, xcb_atom_t atom) {
    const XcbReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(xcb, xcb_get_atom_name(xcb, atom), nullptr));
    return reply ? QString::fromUtf8(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QString();
}

/// The toolkit names its screens as RandR names its outputs and the monitors that it makes of them. A monitor that
/// somebody has defined is unknown to it.
double toolkitRatio(const QString& monitor) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->name() == monitor)
            return screen->devicePixelRatio();
    }
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->devicePixelRatio() : 1;
}

bool toolkitWasTold() {
    for (const char* name : {"QT_SCREEN_SCALE_FACTORS", "QT_SCALE_FACTOR", "QT_USE_PHYSICAL_DPI"}) {
        if (!qEnvironmentVariableIsEmpty(name))
            return true;
    }
    return false;
}

/// More than any monitor needs; what stands in the resource database or the environment may be anything.
constexpr double largestScale = 16;

/// Also of what is no number at all.
double plausible(double scale) { return scale > 1 ? std::min(scale, largestScale) : 1; }

double quarters(double scale) { return std::round(scale * 4) / 4; }

std::vector<Screen> withoutMirrors(const std::vector<Screen>& screens) {
    std::vector<Screen> result;
    for (auto screen = screens.begin(); screen != screens.end(); ++screen) {
        const bool shownElsewhere = std::any_of(screens.begin(), screens.end(), [&](const Screen& other) {
            // Of two equal ones the first stays.
            return &other != &*screen && other.frame.contains(screen->frame) &&
                   (other.frame != screen->frame || &other < &*screen);
        });
        if (!shownElsewhere)
            result.push_back(*screen);
    }
    return result;
}

} // namespace

double x11UnitsPerPoint(const X11ScaleHints& hints) {
    if (hints.toolkitWasTold)
        return plausible(hints.toolkitRatio);
    const double dpi = xftDpi(hints.resources);
    if (const double scale = quarters(dpi > 0 ? dpi / 96 : hints.toolkitRatio); scale > 1)
        return plausible(scale);
    return plausible(leadingNumber(hints.gdkScale));
}

X11Screens::X11Screens(X11MainConnection& connection) : connection_(connection), context_(std::make_unique<QObject>()) {
    watch();
    screens_ = read();
    connection_.dispatchSoon();
}

X11Screens::~X11Screens() = default;

std::vector<Screen> X11Screens::screens() const {
    const std::lock_guard lock(mutex_);
    return screens_;
}

void X11Screens::watch() {
    if (!connection_.ok())
        return;
    const auto root = connection_.screen().root;
    connection_.watchRoot(XCB_EVENT_MASK_PROPERTY_CHANGE, true);
    // The server's notice and the toolkit's may come in either order; the later one finds both up to date.
    const bool randr = connection_.has(xcb_randr_id);
    if (randr) {
        xcb_discard_reply(connection_.get(), xcb_randr_query_version(connection_.get(), 1, 5).sequence);
        xcb_randr_select_input(connection_.get(), root,
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    events_ = connection_.addHandler([this, root, firstOfRandr = randr ? connection_.firstEvent(xcb_randr_id) : 0](
                                         const xcb_generic_event_t& event) {
        const int code = event.response_type & 0x7F;
        if (code == XCB_PROPERTY_NOTIFY) {
            const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (changed.window == root && changed.atom == XCB_ATOM_RESOURCE_MANAGER)
                refresh();
        } else if (firstOfRandr != 0 &&
                   (code == firstOfRandr + XCB_RANDR_SCREEN_CHANGE_NOTIFY || code == firstOfRandr + XCB_RANDR_NOTIFY)) {
            refresh();
        }
    });
    const auto follow = [this](QScreen* screen) {
        const auto again = [this] { refresh(); };
        QObject::connect(screen, &QScreen::geometryChanged, context_.get(), again);
        QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, context_.get(), again);
    };
    for (QScreen* screen : QGuiApplication::screens())
        follow(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, context_.get(), [this, follow](QScreen* screen) {
        follow(screen);
        refresh();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, context_.get(), [this] { refresh(); });
}

void X11Screens::refresh() {
    auto now = read();
    connection_.dispatchSoon();
    {
        const std::lock_guard lock(mutex_);
        if (now == screens_)
            return;
        screens_ = std::move(now);
    }
    if (changed_)
        changed_();
}

std::vector<Screen> X11Screens::read() const {
    if (!connection_.ok())
        return {};
    const std::string resources = resourceManager(connection_);
    const QByteArray gdkScale = qgetenv("GDK_SCALE");
    const bool told = toolkitWasTold();
    return monitors([&](Rect frame, double ratio) {
        return Screen{frame,
                      x11UnitsPerPoint({.toolkitRatio = ratio,
                                        .toolkitWasTold = told,
                                        .resources = resources,
                                        .gdkScale = {gdkScale.data(), static_cast<std::size_t>(gdkScale.size())}})};
    });
}

std::vector<Screen> X11Screens::monitors(const std::function<Screen(Rect, double)>& make) const {
    auto* const xcb = connection_.get();
    const xcb_screen_t& root = connection_.screen();
    XcbReply<xcb_randr_get_monitors_reply_t> reply;
    if (connection_.has(xcb_randr_id))
        reply.reset(xcb_randr_get_monitors_reply(xcb, xcb_randr_get_monitors(xcb, root.root, true), nullptr));
    if (!reply) // a server before RandR 1.5
        return {make({0, 0, static_cast<double>(root.width_in_pixels), static_cast<double>(root.height_in_pixels)}, 1)};

    std::vector<Screen> result;
    for (auto i = xcb_randr_get_monitors_monitors_iterator(reply.get()); i.rem; xcb_randr_monitor_info_next(&i)) {
        const xcb_randr_monitor_info_t& monitor = *i.data;
        const Rect frame{static_cast<double>(monitor.x), static_cast<double>(monitor.y),
                         static_cast<double>(monitor.width), static_cast<double>(monitor.height)};
        if (frame.width > 0 && frame.height > 0)
            result.insert(monitor.primary ? result.begin() : result.end(),
                          make(frame, toolkitRatio(atomName(xcb, monitor.name))));
    }
    return withoutMirrors(result);
}

} // namespace tarvik
