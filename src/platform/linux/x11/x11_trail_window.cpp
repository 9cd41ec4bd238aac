#include "platform/linux/x11/x11_trail_window.h"

#include <xcb/composite.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

#include <algorithm>

namespace tarvik {

namespace {

constexpr int coverStep = 256; // pixels

std::vector<xcb_rectangle_t> rectangles(const std::vector<PixelRect>& rects) {
    std::vector<xcb_rectangle_t> result;
    result.reserve(rects.size());
    for (const PixelRect& rect : rects) {
        result.push_back({static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                          static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height)});
    }
    return result;
}

/// A visual whose pixels are laid out as 0xAARRGGBB.
xcb_visualid_t argbVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem; xcb_depth_next(&depth)) {
        if (depth.data->depth != 32)
            continue;
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem; xcb_visualtype_next(&visual)) {
            if (visual.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.data->red_mask == 0xFF0000 &&
                visual.data->green_mask == 0xFF00 && visual.data->blue_mask == 0xFF)
                return visual.data->visual_id;
        }
    }
    return XCB_NONE;
}

bool ownByteOrder(const xcb_setup_t& setup) {
    return (setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) == (Q_BYTE_ORDER == Q_LITTLE_ENDIAN);
}

} // namespace

X11TrailVisual::X11TrailVisual(const X11MainConnection& connection) : connection_(connection) {
    if (!connection.ok()) {
        problem_ = "the X server does not answer";
        return;
    }
    visual_ = argbVisual(connection.screen());
    if (visual_ == XCB_NONE || !ownByteOrder(*xcb_get_setup(connection.get())))
        problem_ = "the display has no visual with an alpha channel";
    else if (!connection.has(xcb_shape_id) || !connection.has(xcb_xfixes_id))
        problem_ = "the X server lacks SHAPE or XFIXES";
    if (!problem_.empty())
        return;
    // Extensions ignore a client that has not announced the version it speaks (input shapes, regions).
    xcb_discard_reply(connection.get(), xcb_xfixes_query_version(connection.get(), 5, 0).sequence);
    xcb_discard_reply(connection.get(), xcb_shape_query_version(connection.get()).sequence);
    if (connection.has(xcb_composite_id))
        xcb_discard_reply(connection.get(), xcb_composite_query_version(connection.get(), 0, 4).sequence);
    windowType_ = connection.atom("_NET_WM_WINDOW_TYPE");
    dragged_ = connection.atom("_NET_WM_WINDOW_TYPE_DND");
    bypassCompositor_ = connection.atom("_NET_WM_BYPASS_COMPOSITOR");
    colormap_ = xcb_generate_id(connection.get());
    xcb_create_colormap(connection.get(), XCB_COLORMAP_ALLOC_NONE, colormap_, connection.screen().root, visual_);
}

X11TrailVisual::~X11TrailVisual() {
    if (colormap_ != XCB_NONE)
        xcb_free_colormap(connection_.get(), colormap_);
}

void X11TrailVisual::describe(xcb_window_t window) const {
    static constexpr char className[] = "tarvik\0Tarvik";
    const auto set = [&](xcb_atom_t property, xcb_atom_t type, std::uint8_t bits, std::uint32_t count,
                         const void* data) {
        xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, property, type, bits, count, data);
    };
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, sizeof className, className);
    // Compositing managers give most kinds of window a shadow or let them fade in. What is dragged along with the
    // pointer they leave alone.
    set(windowType_, XCB_ATOM_ATOM, 32, 1, &dragged_);
    // 2: do not stop compositing for a window as large as the screen.
    const std::uint32_t keepCompositing = 2;
    set(bypassCompositor_, XCB_ATOM_CARDINAL, 32, 1, &keepCompositing);
}

X11TrailWindow::X11TrailWindow(X11MainConnection& connection, const X11TrailVisual& visual, const PixelRect& frame)
    : connection_(connection)
    , xcb_(connection.get())
    , window_(xcb_generate_id(xcb_))
    , context_(xcb_generate_id(xcb_))
    , lasting_(xcb_generate_id(xcb_))
    , moving_(xcb_generate_id(xcb_))
    , whole_(xcb_generate_id(xcb_)) {
    const xcb_create_window_value_list_t values{
        .background_pixel = 0,
        .border_pixel = 0, // must be given where the parent's depth is another one
        .override_redirect = 1,
        .event_mask = XCB_EVENT_MASK_EXPOSURE,
        .colormap = visual.colormap(),
    };
    xcb_create_window_aux(
        xcb_, 32, window_, connection.screen().root, static_cast<std::int16_t>(frame.x),
        static_cast<std::int16_t>(frame.y), static_cast<std::uint16_t>(std::max(frame.width, 1)),
        static_cast<std::uint16_t>(std::max(frame.height, 1)), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual.visual(),
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
        &values);
    xcb_shape_rectangles(xcb_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, window_, 0, 0, 0,
                         nullptr);
    const std::uint32_t noExposures = 0;
    xcb_create_gc(xcb_, context_, window_, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    for (const auto region : {lasting_, moving_, whole_})
        xcb_xfixes_create_region(xcb_, region, 0, nullptr);
    visual.describe(window_);
}

X11TrailWindow::~X11TrailWindow() {
    for (const auto region : {lasting_, moving_, whole_})
        xcb_xfixes_destroy_region(xcb_, region);
    xcb_free_gc(xcb_, context_);
    xcb_destroy_window(xcb_, window_);
    connection_.flush();
}

void X11TrailWindow::map() {
    empty(0);
    raise();
    xcb_map_window(xcb_, window_);
}

bool X11TrailWindow::redirected() const {
    if (!connection_.has(xcb_composite_id))
        return false;
    // Only a window that is redirected has a pixmap to name.
    const xcb_pixmap_t pixmap = xcb_generate_id(xcb_);
    const auto request = xcb_composite_name_window_pixmap_checked(xcb_, window_, pixmap);
    const XcbReply<xcb_generic_error_t> refused(xcb_request_check(xcb_, request));
    connection_.dispatchSoon();
    if (refused)
        return false;
    xcb_free_pixmap(xcb_, pixmap);
    return true;
}

void X11TrailWindow::makeTranslucent() { empty(0); }

void X11TrailWindow::makeShaped(std::uint32_t fill) { empty(fill | 0xFF000000); }

/// The shape first: nobody is to see the background change.
void X11TrailWindow::empty(std::uint32_t background) {
    replaceShape({});
    setMovingShape({}, 0, 0);
    applyShape();
    covered_ = {};
    xcb_change_window_attributes(xcb_, window_, XCB_CW_BACK_PIXEL, &background);
}

void X11TrailWindow::cover(const PixelRect& rect) {
    if (covered_.united(rect) == covered_)
        return;
    const auto down = [](int value) { return value / coverStep * coverStep; };
    const auto up = [](int value) { return (value + coverStep - 1) / coverStep * coverStep; };
    const PixelRect around{down(rect.x), down(rect.y), up(rect.right()) - down(rect.x),
                           up(rect.bottom()) - down(rect.y)};
    covered_ = covered_.united(around);
    const auto all = rectangles({covered_});
    xcb_shape_rectangles(xcb_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, window_, 0, 0, 1,
                         all.data());
}

void X11TrailWindow::clear(const PixelRect& rect) const {
    xcb_clear_area(xcb_, false, window_, static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                   static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height));
}

void X11TrailWindow::raise() const {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(xcb_, window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void X11TrailWindow::put(const QImage& image, int x, int y) const {
    static constexpr std::uint32_t requestHeader = 64; // bytes, generously
    const auto rowBytes = static_cast<std::uint32_t>(image.width()) * 4;
    if (rowBytes == 0 || image.bytesPerLine() != static_cast<qsizetype>(rowBytes))
        return; // 32-bit images have no padding
    const auto rowsAtOnce = static_cast<int>(std::max<std::uint64_t>(
        1, (std::uint64_t{xcb_get_maximum_request_length(xcb_)} * 4 - requestHeader) / rowBytes));
    for (int row = 0; row < image.height(); row += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, image.height() - row);
        xcb_put_image(xcb_, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_, static_cast<std::uint16_t>(image.width()),
                      static_cast<std::uint16_t>(rows), static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y + row), 0, 32, rowBytes * static_cast<std::uint32_t>(rows),
                      image.constScanLine(row));
    }
}

void X11TrailWindow::addToShape(const std::vector<PixelRect>& rects) const {
    if (rects.empty())
        return;
    const auto added = rectangles(rects);
    xcb_xfixes_set_region(xcb_, whole_, static_cast<std::uint32_t>(added.size()), added.data());
    xcb_xfixes_union_region(xcb_, lasting_, whole_, lasting_);
}

void X11TrailWindow::replaceShape(const std::vector<PixelRect>& rects) const {
    const auto all = rectangles(rects);
    xcb_xfixes_set_region(xcb_, lasting_, static_cast<std::uint32_t>(all.size()), all.data());
}

void X11TrailWindow::setMovingShape(const std::vector<PixelRect>& rects, int x, int y) const {
    const auto moved = rectangles(rects);
    xcb_xfixes_set_region(xcb_, moving_, static_cast<std::uint32_t>(moved.size()), moved.data());
    xcb_xfixes_translate_region(xcb_, moving_, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
}

void X11TrailWindow::applyShape() const {
    xcb_xfixes_union_region(xcb_, lasting_, moving_, whole_);
    xcb_xfixes_set_window_shape_region(xcb_, window_, XCB_SHAPE_SK_BOUNDING, 0, 0, whole_);
}

} // namespace tarvik
