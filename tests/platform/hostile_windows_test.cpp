// Applications and a window manager that lie, vanish and write nonsense, on a desktop where nobody else is the window
// manager. The tap runs all the while, and clicks go on.
#include "platform/support/tap_fixture.h"

#include "platform/linux/x11/x11_applications.h"
#include "platform/linux/x11/x11_error_trap.h"
#include "platform/linux/x11/x11_property.h"
#include "platform/linux/x11/x11_windows.h"

#include <X11/Xatom.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <random>
#include <thread>

namespace tarvik {
namespace {

using Items = std::vector<unsigned long>;

/// A client that does as it likes.
class Hostile {
public:
    XWindow open() {
        const auto window = XCreateSimpleWindow(display(), x->root(), 50, 50, 200, 200, 0, 0, 0);
        XMapWindow(display(), window);
        XSync(display(), False);
        return window;
    }
    void destroy(XWindow window) {
        XDestroyWindow(display(), window);
        XSync(display(), False);
    }
    void bytes(XWindow window, Atom property, Atom type, const std::string& value) {
        change(window, property, type, 8, value.data(), value.size());
    }
    void items(XWindow window, Atom property, Atom type, const Items& value) {
        change(window, property, type, 32, value.data(), value.size());
    }
    void announce(Atom property, const Items& value, Atom type = XA_WINDOW) { items(x->root(), property, type, value); }
    const X11Atoms& atoms() const { return x->atoms(); }
    Display* display() const { return x->display(); }

    const std::unique_ptr<X11Connection> x = X11Connection::open();

private:
    void change(XWindow window, Atom property, Atom type, int format, const void* value, std::size_t count) {
        X11ErrorTrap trap(display());
        XChangeProperty(display(), window, property, type, format, PropModeReplace,
                        static_cast<const unsigned char*>(value), static_cast<int>(count));
        trap.sync();
    }
};

/// The most memory that the process has had since the last call, in kB.
long peakMemory() {
    std::ifstream status("/proc/self/status");
    long peak = 0;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            peak = std::stol(line.substr(6));
    }
    std::ofstream("/proc/self/clear_refs") << 5;
    return peak;
}

class HostileWindows : public X11Tap {
protected:
    void click() {
        input("mouse click 3");
        expectSeen(rightClick);
    }
    bool isShortLine(const std::string& text) {
        return text.size() < 1000 && std::none_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; });
    }
    std::string idOf(XWindow window) { return applicationId(*x, window, *entries).value_or("none"); }

    Hostile hostile;
    const X11Atoms& atoms = hostile.atoms();
    std::shared_ptr<const DesktopEntries> entries =
        std::make_shared<const DesktopEntries>(std::vector<std::filesystem::path>(), "");
    const std::unique_ptr<X11Connection> x = X11Connection::open();
    const X11Ewmh ewmh{*x};
    X11Windows windows{ewmh, entries};
};

TEST_F(HostileWindows, whateverTheClassIs) {
    using namespace std::string_literals;
    const auto window = hostile.open();
    EXPECT_EQ(idOf(window), "none");
    hostile.announce(atoms.activeWindow, {window});
    struct {
        Atom type;
        std::string value;
        std::string id;
    } const cases[] = {
        {XA_STRING, "", "none"},
        {XA_STRING, "\0"s, "none"},
        {XA_STRING, "\0\0\0\0"s, "none"},
        {XA_STRING, "only"s, "only"},
        {XA_STRING, "a\0b"s, "b"},
        {XA_STRING, "a\0b\0c\0d"s, "b"},
        {XA_STRING, "a\0\x1b]0;x\x07\r\n2025-01-31 14:03:07.412 ended\0"s, " ]0;x   2025-01-31 14:03:07.412 ended"},
        {atoms.utf8String, "a\0\xe2\x80\xaetxt.exe\xff\0"s, " txt.exe\xEF\xBF\xBD"},
        {XA_INTEGER, "a\0b\0"s, "b"},
        {XA_STRING, std::string(10'000'000, 'x'), std::string(maxPropertyText, 'x')},
    };
    for (const auto& [type, value, id] : cases) {
        hostile.bytes(window, XA_WM_CLASS, type, value);
        EXPECT_EQ(idOf(window), id);
        EXPECT_TRUE(isShortLine(windows.targetWindow(std::nullopt)->describe()));
    }
    hostile.items(window, XA_WM_CLASS, XA_STRING, {1, 2, 3});
    EXPECT_EQ(idOf(window), "none") << "no text at all";
    hostile.destroy(window);
    click();
}

TEST_F(HostileWindows, largePropertiesAreNotRead) {
    const auto window = hostile.open();
    const Items many(2'500'000, window);
    const Atom properties[] = {atoms.windowType,   atoms.wmStateList,   atoms.wmAllowedActions,
                               atoms.frameExtents, atoms.wmDesktop,     atoms.gtkFrameExtents,
                               atoms.wmState,      XA_WM_TRANSIENT_FOR, atoms.gtkApplicationId};
    for (const auto property : properties) {
        for (const auto type : {XA_ATOM, XA_CARDINAL, XA_WINDOW}) {
            hostile.items(window, property, type, many);
            peakMemory();
            const auto before = peakMemory();
            hostile.announce(atoms.activeWindow, {window});
            if (const auto found = windows.targetWindow(std::nullopt))
                EXPECT_TRUE(isShortLine(found->describe()));
            EXPECT_TRUE(isShortLine(idOf(window)));
            EXPECT_LT(peakMemory() - before, 2'000) << property;
        }
        XDeleteProperty(hostile.display(), window, property);
    }
    click();
}

TEST_F(HostileWindows, aWindowManagerThatLies) {
    const auto window = hostile.open();
    const auto gone = hostile.open();
    hostile.destroy(gone);
    const Items crowd(100'000, gone);
    hostile.announce(atoms.supported, Items(100'000, atoms.stateFullScreen), XA_ATOM);
    hostile.announce(atoms.numberOfDesktops, {0xFFFFFFFF}, XA_CARDINAL);
    hostile.announce(atoms.currentDesktop, {0xFFFFFFFE}, XA_CARDINAL);
    hostile.announce(atoms.desktopLayout, {7, 0, 0, 9}, XA_CARDINAL);
    for (const auto list : {atoms.clientList, atoms.clientListStacking})
        hostile.announce(list, crowd);
    hostile.items(window, atoms.supportingWmCheck, XA_WINDOW, {x->root()});
    EXPECT_LE(ewmh.clients().size(), maxPropertyItems);
    EXPECT_FALSE(ewmh.desktopLayout());
    // Vanished, nobody's, everybody's, another one's, itself without meaning it.
    for (const auto check : {gone, XWindow{0x1FFFFFFF}, XWindow{0xFFFFFFFF}, x->root(), window}) {
        hostile.announce(atoms.supportingWmCheck, {check});
        EXPECT_EQ(ewmh.managed(), check == x->root());
        EXPECT_EQ(ewmh.supports(atoms.stateFullScreen), check == x->root());
    }
    for (const auto active : {gone, XWindow{0xFFFFFFFF}, x->root(), window}) {
        hostile.announce(atoms.activeWindow, {active});
        const auto target = windows.targetWindow(Point{120, 120});
        if (target)
            EXPECT_TRUE(isShortLine(target->describe()));
        EXPECT_EQ(target != nullptr, active == x->root() || active == window);
        click();
    }
    for (const auto property : {atoms.activeWindow, atoms.clientList, atoms.supported}) {
        hostile.bytes(x->root(), property, XA_WINDOW, "no items");
        EXPECT_EQ(windows.targetWindow(Point{120, 120}), nullptr);
        click();
    }
}

TEST_F(HostileWindows, clicksGoOnWhileWindowsVanish) {
    std::atomic<bool> ending = false;
    std::thread storm([&ending, seed = std::mt19937(1)]() mutable {
        Hostile own;
        const auto& atoms = own.atoms();
        while (!ending) {
            const auto window = own.open();
            own.bytes(window, XA_WM_CLASS, XA_STRING, std::string(seed() % 1000, '\n'));
            own.announce(atoms.clientListStacking, Items(1 + seed() % 50, window));
            // Faster than anyone can look.
            for (int i = 0; i < 100; ++i)
                XChangeProperty(own.display(), own.x->root(), atoms.activeWindow, XA_WINDOW, 32, PropModeReplace,
                                reinterpret_cast<const unsigned char*>(&window), 1);
            if (seed() % 2 == 0)
                own.destroy(window);
            else
                XDestroyWindow(own.display(), window);
            std::this_thread::sleep_for(std::chrono::milliseconds(10)); // the others' turn
        }
    });
    for (int i = 0; i < 10 && !HasFailure(); ++i) {
        click();
        if (const auto target = windows.targetWindow(Point{120, 120})) {
            target->isFullScreen();
            target->minimize();
            EXPECT_TRUE(isShortLine(target->describe()));
        }
    }
    ending = true;
    storm.join();
}

} // namespace
} // namespace tarvik
