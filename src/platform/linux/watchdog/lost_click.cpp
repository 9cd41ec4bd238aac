#include "platform/linux/watchdog/lost_click.h"

#include <X11/extensions/XInput2.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <thread>

namespace tarvik {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1s;
constexpr auto pause = 10ms;
/// Device pixels; who moves further draws.
constexpr double farthest = 30;
/// Of those that are clicked; the wheel's come after them.
constexpr int buttons = 3;

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
    , location_(pointer().location) {}

bool LostClick::giveBack() {
    if (!taken_ || !probe_.waitUntilFree(*master_, patience))
        return false;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    auto now = pointer();
    for (; now.pressed; now = pointer()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(pause);
    }
    if (std::abs(now.location.x - location_.x) > farthest || std::abs(now.location.y - location_.y) > farthest)
        return false;
    const int button = devices_.buttons().logical(press_.button);
    devices_.fakeButton(press_.source, button, true);
    devices_.fakeButton(press_.source, button, false);
    XSync(x_.display(), False);
    return true;
}

LostClick::Pointer LostClick::pointer() const {
    Pointer result;
    if (!master_)
        return result;
    ::Window root = 0;
    ::Window child = 0;
    double x = 0;
    double y = 0;
    double insideX = 0;
    double insideY = 0;
    XIButtonState down{};
    XIModifierState modifiers{};
    XIGroupState group{};
    if (!XIQueryPointer(x_.display(), *master_, x_.root(), &root, &child, &x, &y, &insideX, &insideY, &down, &modifiers,
                        &group))
        return result;
    result.location = {x, y};
    for (int button = 1; button <= buttons && button < down.mask_len * 8; ++button)
        result.pressed |= XIMaskIsSet(down.mask, button) != 0;
    std::free(down.mask);
    return result;
}

} // namespace tarvik
