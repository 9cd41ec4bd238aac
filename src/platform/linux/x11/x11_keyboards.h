// The keyboards behind the session's keyboard.
#pragma once

#include "platform/linux/x11/x11_connection.h"

#include <X11/extensions/XInput.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// One real keyboard (a "slave" of the session's), opened so that keys can be faked and read on it alone.
class X11Keyboard {
public:
    /// Null when there is no such keyboard any more.
    static std::shared_ptr<const X11Keyboard> open(const X11Connection& x, int id);
    ~X11Keyboard();
    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;

    int id() const { return id_; }
    bool isDown(std::uint8_t keyCode) const;
    void fake(std::uint8_t keyCode, bool down) const;

private:
    X11Keyboard(const X11Connection& x, int id, XDevice* device) : x_(x), id_(id), device_(device) {}

    const X11Connection& x_;
    const int id_;
    XDevice* const device_;
};

struct X11Keyboards {
    /// The identifiers of the enabled ones.
    std::vector<int> ids;
    /// The one that was typed on last, whose layout the session's keyboard has taken over. Keys that programs make
    /// (XTEST) do not count, as long as there is another keyboard: what they are made on may have a layout that nobody
    /// chose. 0 when there is none.
    int inUse = 0;
    std::string nameInUse;
};

/// What does not change as long as a device lives, by its identifier and name: kept, it need not be asked again.
struct X11KnownKeyboards {
    using Key = std::pair<int, std::string>;
    std::map<Key, bool> areXTest;
    std::map<Key, std::shared_ptr<const X11Keyboard>> opened;
};

/// The keyboards behind the session's first keyboard, the one that every desktop has. One round trip, and one for each
/// device that is not known yet.
X11Keyboards findX11Keyboards(const X11Connection& x, X11KnownKeyboards& known);

} // namespace tarvik
