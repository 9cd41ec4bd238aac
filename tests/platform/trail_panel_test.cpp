// The trail as it reaches the screen: pixels are read back from the server.
#include "overlay/trail_style.h"
#include "platform/linux/x11/x11_trail_panels.h"
#include "platform/support/event_loop.h"

#include <gtest/gtest.h> // before Xlib, whose macros take the names None and Bool

#include <QGuiApplication>
#include <QPalette>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <xcb/shape.h>
#include <xcb/xcbext.h>

#include <algorithm>

namespace tarvik {
namespace {

constexpr QRgb accent = 0xFF1A5FB4;
constexpr QRgb paper = 0xFFE6E1D7;
constexpr QRgb tooltip = 0xFF303236;

struct NoLog : LogSink {
    void write(std::string_view) override {}
};

int difference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

/// A premultiplied colour over an opaque one.
QRgb over(QRgb top, QRgb bottom) {
    const auto channel = [&](int t, int b) { return t + b * (255 - qAlpha(top)) / 255; };
    return qRgb(channel(qRed(top), qRed(bottom)), channel(qGreen(top), qGreen(bottom)),
                channel(qBlue(top), qBlue(bottom)));
}

/// Another client of the same server: it owns a sheet of plain paper under the trail and looks at the screen.
class Desktop {
public:
    Desktop()
        : display_(XOpenDisplay(nullptr))
        , root_(DefaultRootWindow(display_))
        , sheet_(plainWindow(0, 0, DisplayWidth(display_, 0), DisplayHeight(display_, 0), paper)) {}
    ~Desktop() { XCloseDisplay(display_); }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    ::Window plainWindow(int x, int y, int width, int height, QRgb colour) {
        XSetWindowAttributes attributes{};
        attributes.background_pixel = colour & 0xFFFFFF;
        attributes.override_redirect = True;
        attributes.event_mask = ButtonPressMask;
        const ::Window window = XCreateWindow(
            display_, root_, x, y, static_cast<unsigned>(width), static_cast<unsigned>(height), 0, CopyFromParent,
            InputOutput, CopyFromParent, CWBackPixel | CWOverrideRedirect | CWEventMask, &attributes);
        XMapRaised(display_, window);
        XSync(display_, False);
        return window;
    }
    void clearTo(::Window window, QRgb colour) {
        XSetWindowBackground(display_, window, colour & 0xFFFFFF);
        XClearWindow(display_, window);
        XSync(display_, False);
    }
    void destroy(::Window window) {
        XDestroyWindow(display_, window);
        XSync(display_, False);
    }

    /// What a user sees there.
    QRgb pixel(int x, int y) const { return row(x, y, 1).front(); }
    std::vector<QRgb> row(int x, int y, int width) const {
        XImage* image = XGetImage(display_, root_, x, y, static_cast<unsigned>(width), 1, AllPlanes, ZPixmap);
        std::vector<QRgb> result;
        result.reserve(static_cast<std::size_t>(width));
        for (int i = 0; i < width; ++i)
            result.push_back(static_cast<QRgb>(XGetPixel(image, i, 0)) | 0xFF000000);
        XDestroyImage(image);
        return result;
    }
    bool shows(int x, int y, QRgb colour, int tolerance = 3) const {
        return difference(pixel(x, y), colour) <= tolerance;
    }
    bool blank(int x, int y, int width, int height) const {
        for (int line = y; line < y + height; ++line) {
            for (const QRgb colour : row(x, line, width)) {
                if (difference(colour, paper) > 0)
                    return false;
            }
        }
        return true;
    }

    /// Presses and releases the button there (4 and 5 are the wheel); whether the sheet got the press.
    bool sheetGetsClick(int x, int y, unsigned button = 1) {
        XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
        XTestFakeButtonEvent(display_, button, True, CurrentTime);
        XTestFakeButtonEvent(display_, button, False, CurrentTime);
        XFlush(display_);
        return eventuallyInLoop([&] {
            XEvent event;
            while (XCheckTypedEvent(display_, ButtonPress, &event)) {
                if (event.xbutton.window == sheet_ && event.xbutton.x == x && event.xbutton.y == y &&
                    event.xbutton.button == button)
                    return true;
            }
            return false;
        });
    }

    ::Window compositor() const { return XGetSelectionOwner(display_, XInternAtom(display_, "_NET_WM_CM_S0", False)); }
    void endCompositor() {
        XKillClient(display_, compositor());
        XSync(display_, False);
    }

private:
    Display* const display_;
    const ::Window root_;
    const ::Window sheet_;
};

struct TrailPanelTest : testing::Test {
    Desktop desktop;
    NoLog log;
    X11MainConnection connection;
    X11TrailPanels panels{connection, log};
    std::shared_ptr<Path> path = std::make_shared<Path>();
    const bool composited = desktop.compositor() != None;
    std::unique_ptr<TrailPanel> panel;

    explicit TrailPanelTest(double scale = 1) : panel(panels.make({{0, 0, 1280, 800}, scale})) {}

    void draw(std::initializer_list<Point> points, const std::optional<std::string>& label = {}) {
        for (const Point p : points)
            path->append(p);
        panel->draw({path, path->size()}, label, (*path)[path->size() - 1]);
        panel->show();
    }
    QRgb lineColour(double scale = 1) const {
        return composited ? over(trailColours(accent & 0xFFFFFF, scale)[TrailMask::fullLevel], paper) : accent;
    }
    bool showsLine(int x, int y) {
        return eventuallyInLoop([&] { return desktop.shows(x, y, lineColour()); });
    }
    /// Of how many rectangles the window consists.
    int shapeRects() {
        auto* const xcb = connection.get();
        const auto window = static_cast<X11TrailPanel&>(*panel).window();
        const XcbReply<xcb_shape_get_rectangles_reply_t> reply(
            xcb_shape_get_rectangles_reply(xcb, xcb_shape_get_rectangles(xcb, window, XCB_SHAPE_SK_BOUNDING), nullptr));
        return xcb_shape_get_rectangles_rectangles_length(reply.get());
    }
    bool showsPaper(int x, int y, int width = 1, int height = 1) {
        return eventuallyInLoop([&] { return desktop.blank(x, y, width, height); });
    }
};

TEST_F(TrailPanelTest, DrawsTheLineWithEvenJointsAndNothingBesideIt) {
    ASSERT_TRUE(showsPaper(0, 0, 1280, 800));
    draw({{200, 300}, {400, 300}});
    ASSERT_TRUE(showsLine(300, 300));
    draw({{600, 300}, {600, 500}, {500, 250}});
    ASSERT_TRUE(showsLine(600, 400));
    // On the joints, on the crossing, and across the whole width of the line.
    for (const Point p : {Point{400, 300}, {600, 300}, {520, 300}, {600, 499}, {300, 298}, {300, 302}})
        EXPECT_TRUE(desktop.shows(static_cast<int>(p.x), static_cast<int>(p.y), lineColour())) << p.x << ", " << p.y;
    // The shadow is soft and near; without a compositing manager there is none.
    const QRgb beside = desktop.pixel(300, 305);
    EXPECT_EQ(qRed(beside) < qRed(paper), composited);
    EXPECT_GT(qRed(beside), qRed(paper) / 2);
    EXPECT_TRUE(desktop.blank(0, 0, 1280, 240));
    EXPECT_TRUE(desktop.blank(0, 520, 1280, 280));
    EXPECT_TRUE(desktop.blank(200, 315, 300, 185));
    EXPECT_TRUE(desktop.blank(0, 240, 185, 280));
}

TEST_F(TrailPanelTest, LetsClicksThroughAndIsGoneAfterHiding) {
    draw({{200, 300}, {600, 300}}, "Back");
    ASSERT_TRUE(showsLine(400, 300));
    EXPECT_TRUE(desktop.sheetGetsClick(400, 300));
    EXPECT_TRUE(desktop.sheetGetsClick(630, 330)); // on the pill
    EXPECT_TRUE(desktop.sheetGetsClick(400, 300, Button5));
    panel->hide();
    EXPECT_FALSE(panel->visible());
    EXPECT_TRUE(showsPaper(0, 0, 1280, 800));
}

TEST_F(TrailPanelTest, PillStandsBesideThePointerAndMovesWithIt) {
    draw({{200, 300}, {400, 300}}, "Back");
    const QRgb background = composited ? over(qPremultiply((tooltip & 0xFFFFFF) | 0xF7000000), paper) : tooltip;
    const auto showsPill = [&](int x, int y) { return desktop.shows(x, y, background, 6); };
    // 18 right of and below the pointer; the first letter begins 12 further right.
    ASSERT_TRUE(eventuallyInLoop([&] { return showsPill(400 + 18 + 6, 300 + 18 + 16); }));
    EXPECT_TRUE(showsPill(400 + 18 + 20, 300 + 18 + 3));
    EXPECT_TRUE(desktop.blank(400 + 18, 300 + 18, 2, 2)); // the corner is round
    EXPECT_TRUE(desktop.blank(400 + 10, 300 + 16 + 18, 8, 1));
    int light = 0;
    for (const QRgb colour : desktop.row(400 + 18 + 12, 300 + 18 + 16, 30))
        light += qGreen(colour) > 180;
    EXPECT_GT(light, 3); // letters

    draw({{400, 500}}, "Back");
    ASSERT_TRUE(eventuallyInLoop([&] { return showsPill(400 + 18 + 6, 500 + 18 + 16); }));
    EXPECT_TRUE(showsPaper(418, 318, 150, 60));
    EXPECT_TRUE(showsLine(400, 330));

    draw({{400, 510}});
    EXPECT_TRUE(showsPaper(430, 500, 150, 100));

    // Over its own line, and back.
    draw({{440, 540}, {460, 560}, {400, 510}}, "Back");
    ASSERT_TRUE(eventuallyInLoop([&] { return showsPill(400 + 18 + 6, 510 + 18 + 16); }));
    draw({{100, 510}}, "Back");
    EXPECT_TRUE(showsLine(440, 540));
}

TEST_F(TrailPanelTest, AnotherPathAndAShorterOneStartAfresh) {
    draw({{200, 300}, {600, 300}}, "Back");
    ASSERT_TRUE(showsLine(400, 300));
    path = std::make_shared<Path>();
    draw({{200, 600}, {600, 600}, {600, 700}});
    EXPECT_TRUE(showsLine(400, 600));
    EXPECT_TRUE(showsPaper(180, 280, 500, 120));
    panel->draw({path, 2}, {}, {600, 600});
    EXPECT_TRUE(showsPaper(580, 660, 40, 60));
    EXPECT_TRUE(showsLine(400, 600));

    panel->hide();
    path = std::make_shared<Path>();
    draw({{700, 100}, {700, 200}});
    EXPECT_TRUE(showsLine(700, 150));
    EXPECT_TRUE(showsPaper(180, 580, 480, 160));
    panel->draw({}, {}, {});
    EXPECT_TRUE(showsPaper(0, 0, 1280, 800));
}

TEST_F(TrailPanelTest, StaysAboveWindowsThatComeLater) {
    draw({{200, 300}, {600, 300}});
    ASSERT_TRUE(showsLine(400, 300));
    const ::Window later = desktop.plainWindow(250, 200, 300, 200, accent);
    ASSERT_TRUE(eventuallyInLoop([&] { return desktop.shows(260, 210, accent); }));
    desktop.clearTo(later, paper);
    EXPECT_TRUE(showsPaper(260, 210));
    EXPECT_TRUE(showsLine(400, 300));
    desktop.destroy(later);
    EXPECT_TRUE(showsLine(400, 300));
}

TEST_F(TrailPanelTest, AnUpdateOfALongPathSendsNoMoreThanOneOfAShortPath) {
    std::uint32_t state = 1;
    const auto random = [&](int below) {
        state = state * 1664525 + 1013904223;
        return static_cast<double>((state >> 8) % static_cast<std::uint32_t>(below));
    };
    const auto wander = [&](std::size_t points) {
        while (path->size() < points)
            path->append({20 + random(1200), 20 + random(700)});
    };
    // The same movement each time, so that only what the path was before can make a difference.
    const auto bytesOfUpdates = [&] {
        draw({{600, 400}}, "Back");
        const auto before = xcb_total_written(connection.get());
        for (int i = 0; i < 50; ++i)
            draw({{600.0 + 3 * i, 400.0 + 2 * i}}, "Back");
        return static_cast<double>(xcb_total_written(connection.get()) - before);
    };
    wander(2);
    const double few = bytesOfUpdates();
    int mostRects = 0;
    for (const std::size_t points : {100, 300, 1000, 3000}) {
        wander(points);
        draw({{600, 400}}, "Back");
        mostRects = std::max(mostRects, shapeRects());
    }
    EXPECT_LE(bytesOfUpdates(), 1.2 * few);
    EXPECT_LE(mostRects, composited ? 1 : 1000 + 100); // of the line and of the pill
    panel->hide();
    EXPECT_TRUE(showsPaper(0, 0, 1280, 800));
}

struct DoubleScaleTest : TrailPanelTest {
    DoubleScaleTest() : TrailPanelTest(2) {}
};

TEST_F(DoubleScaleTest, DrawsTwiceAsLarge) {
    draw({{200, 300}, {600, 300}}, "Back");
    ASSERT_TRUE(showsLine(400, 300));
    int solid = 0;
    for (int y = 280; y < 320; ++y)
        solid += desktop.shows(400, y, lineColour(2), 20);
    EXPECT_NEAR(solid, 2 * trailStyle::lineWidth, 1);
    EXPECT_TRUE(desktop.blank(600 + 20, 300 + 30, 100, 5));
    EXPECT_TRUE(eventuallyInLoop([&] { return desktop.shows(600 + 36 + 12, 300 + 36 + 32, tooltip, 12); }));
}

TEST_F(TrailPanelTest, OnlyItsOwnScreenShowsIt) {
    const auto right = panels.make({{640, 0, 640, 800}, 1});
    for (const Point p : {Point{600, 300}, {700, 300}, {700, 400}, {600, 400}})
        path->append(p);
    right->draw({path, path->size()}, "Back", {600, 400});
    right->show();
    EXPECT_TRUE(showsLine(660, 300));
    EXPECT_TRUE(showsLine(640, 400));
    EXPECT_TRUE(desktop.blank(0, 0, 640, 800));
}

/// The last one: nobody starts the compositing manager again.
struct LastTrailPanelTest : TrailPanelTest {};

TEST_F(LastTrailPanelTest, SurvivesTheEndOfTheCompositingManager) {
    if (!composited)
        GTEST_SKIP() << "there is none";
    draw({{200, 300}, {600, 300}}, "Back");
    ASSERT_TRUE(showsLine(400, 300));
    desktop.endCompositor();
    EXPECT_TRUE(eventuallyInLoop([&] { return desktop.shows(400, 300, accent); }));
    EXPECT_TRUE(eventuallyInLoop([&] { return desktop.shows(624, 334, tooltip); }));
    EXPECT_TRUE(showsPaper(0, 0, 1280, 280));
    EXPECT_TRUE(showsPaper(0, 400, 1280, 400));
    draw({{600, 600}}, "Back");
    EXPECT_TRUE(eventuallyInLoop([&] { return desktop.shows(600, 500, accent); }));
}

} // namespace
} // namespace tarvik

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    QPalette palette;
    palette.setColor(QPalette::Highlight, QColor::fromRgb(tarvik::accent));
    palette.setColor(QPalette::ToolTipBase, QColor::fromRgb(tarvik::tooltip));
    palette.setColor(QPalette::ToolTipText, Qt::white);
    QGuiApplication::setPalette(palette);
    return RUN_ALL_TESTS();
}
