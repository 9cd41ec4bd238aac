#include "platform/linux/watchdog/lost_click.h"

#include <X11/extensions/XInput2.h>

#include <chrono>
#include <cmath>
#include <thread>

namespace tarvik {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1s;
constexpr auto pause = 10ms;
/// Device pixels; who moves further draws.
constexpr double farthest = 30;

/// Whether one is down of those that are clicked; the wheel's come after them.
bool isPressed(const PointerState& pointer) { return pointer.down[1] || pointer.down[2] || pointer.down[3]; }

bool isFar(Point a, Point b) { return std::abs(a.x - b.x) > farthest || std::abs(a.y - b.y) > farthest; }

std::optional<int> masterOf(Display* display, int device) {
    int count = 0;
    auto* const info = XIQueryDevice(display, device, &count);
    if (!info)
        return std::nullopt;
    const std::optional<int> master = info->use == XISlavePointer ? std::optional<int>(info->attachment) : std::nullopt;
    XIFreeDeviceInfo(info);
    return master;
}

} // namespace

LostClick::LostClick(const X11Connection& x, const RawPress& press)
    : x_(x)
    , devices_(x.display())
    , probe_(x.display(), x.root())
    , press_(press)
    , master_(masterOf(x.display(), press.source))
    , taken_(master_ && !probe_.waitUntilFree(*master_, 0ms))
    , before_(pointer()) {}

bool LostClick::giveBack() {
    if (!taken_ || !before_ || !probe_.waitUntilFree(*master_, patience))
        return false;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    auto now = pointer();
    for (; now && isPressed(*now); now = pointer()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(pause);
    }
    if (!now || isFar(now->location, before_->location))
        return false;
    const int button = devices_.buttons().logical(press_.button);
    devices_.fakeButton(press_.source, button, true);
    devices_.fakeButton(press_.source, button, false);
    XSync(x_.display(), False);
    return true;
}

std::optional<PointerState> LostClick::pointer() const { return master_ ? probe_.state(*master_) : std::nullopt; }

} // namespace tarvik
