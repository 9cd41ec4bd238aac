// The toolkit first: Xlib's macros would take its names away.
#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QPixmap>

#include "platform/linux/x11/x11_application_list.h"

#include "platform/linux/x11/x11_applications.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_ewmh.h"
#include "platform/linux/x11/x11_property.h"

#include <X11/Xatom.h>

#include <algorithm>
#include <cstring>
#include <unistd.h>
#include <utility>

namespace tarvik {
namespace {

QString text(const std::string& utf8) { return QString::fromStdString(utf8); }

std::optional<IconPixels> pixelsOf(const QIcon& icon, int size) {
    const auto image =
        icon.pixmap(QSize(size, size), 1.0).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return std::nullopt;
    IconPixels pixels{image.width(), image.height(), {}};
    pixels.argb.resize(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(pixels.argb.data() + static_cast<std::ptrdiff_t>(y) * image.width(), image.constScanLine(y),
                    static_cast<std::size_t>(image.width()) * sizeof(std::uint32_t));
    return pixels;
}

/// A desktop file names an icon of the theme or the file itself.
std::optional<IconPixels> iconOf(const DesktopEntry& entry, int size) {
    if (entry.icon.empty() || size <= 0)
        return std::nullopt;
    const auto name = text(entry.icon);
    return pixelsOf(name.startsWith('/') ? QIcon(name) : QIcon::fromTheme(name), size);
}

} // namespace

X11ApplicationList::X11ApplicationList(std::shared_ptr<const DesktopEntries> entries) : entries_(std::move(entries)) {}

std::vector<RunningApplication> X11ApplicationList::running() {
    // Asked when a menu opens, so a connection for the moment of the question is simpler than one that must be served.
    const auto x = X11Connection::open();
    if (!x)
        return {};
    const X11Ewmh ewmh(*x);
    std::vector<RunningApplication> found;
    for (const auto window : ewmh.clients()) {
        if (ewmh.kind(window) != WindowKind::normal || ewmh.hasState(window, x->atoms().stateSkipTaskbar))
            continue;
        RunningApplication application{
            static_cast<std::int64_t>(readItem(*x, window, x->atoms().wmPid, XA_CARDINAL).value_or(0)),
            applicationId(*x, window, *entries_), applicationName(*x, window, *entries_), true};
        // Whatever the toolkit calls our windows.
        if (application.processId == getpid())
            application.id = ownId();
        // An application with several windows, or several processes, is one to the user.
        if (std::none_of(found.begin(), found.end(), [&](const auto& other) { return other.id == application.id; }))
            found.push_back(std::move(application));
    }
    return found;
}

std::optional<InstalledApplication> X11ApplicationList::installed(std::string_view id, int iconSize) {
    const auto* entry = entries_->byId(id);
    if (!entry)
        return std::nullopt;
    return InstalledApplication{entry->name, iconOf(*entry, iconSize)};
}

std::string X11ApplicationList::ownId() const { return QGuiApplication::desktopFileName().toStdString(); }

} // namespace tarvik
