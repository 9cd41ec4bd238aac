#include "screen_watch.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <utility>

namespace tarvik {
namespace {

/// A line is darker in red than paper under the trail's shadow.
constexpr unsigned long redMask = 0xFF0000;
constexpr unsigned long drawnBelow = 0x780000;
constexpr std::chrono::seconds patience(5);

struct DestroyImage {
    void operator()(XImage* image) const { XDestroyImage(image); }
};

bool drawn(unsigned long pixel) { return (pixel & redMask) < drawnBelow; }

} // namespace

ScreenWatch::ScreenWatch() : display_(XOpenDisplay(nullptr)), root_(display_ ? DefaultRootWindow(display_) : None) {
    int error = 0;
    if (!display_ || !XDamageQueryExtension(display_, &damageEvent_, &error))
        throw std::runtime_error("no display, or one that does not report changes");
    damage_ = XDamageCreate(display_, root_, XDamageReportNonEmpty);
}

ScreenWatch::~ScreenWatch() { XCloseDisplay(display_); }

void ScreenWatch::expect(Pixel at) {
    const std::lock_guard lock(mutex_);
    probes_.push_back({at, Clock::now(), std::nullopt});
}

void ScreenWatch::watch(Clock::time_point deadline, std::size_t probes) {
    for (;;) {
        const bool all = look();
        if ((all && firstUnseen_ >= probes) || Clock::now() >= deadline)
            return;
        waitForChange(deadline);
    }
}

std::vector<Probe> ScreenWatch::takeProbes() {
    const std::lock_guard lock(mutex_);
    firstUnseen_ = 0;
    return std::exchange(probes_, {});
}

bool ScreenWatch::isDrawn(Pixel at) {
    const std::unique_ptr<XImage, DestroyImage> image(XGetImage(display_, root_, at.x, at.y, 1, 1, AllPlanes, ZPixmap));
    return image && drawn(XGetPixel(image.get(), 0, 0));
}

bool ScreenWatch::waitUntilBlank(Pixel at) {
    const auto deadline = Clock::now() + patience;
    while (isDrawn(at)) {
        if (Clock::now() > deadline)
            return false;
        waitForChange(deadline);
    }
    return true;
}

void ScreenWatch::waitForChange(Clock::time_point deadline) {
    bool changed = false;
    while (!changed) {
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            changed |= event.type == damageEvent_ + XDamageNotify;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (changed || left <= 0)
            break;
        pollfd source{ConnectionNumber(display_), POLLIN, 0};
        poll(&source, 1, static_cast<int>(left));
    }
    if (changed)
        XDamageSubtract(display_, damage_, None, None); // before looking: what comes later is reported again
}

bool ScreenWatch::look() {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    std::size_t end = 0;
    {
        const std::lock_guard lock(mutex_);
        end = probes_.size();
        if (firstUnseen_ == end)
            return true;
        left = right = probes_[firstUnseen_].at.x;
        top = bottom = probes_[firstUnseen_].at.y;
        for (std::size_t i = firstUnseen_; i < end; ++i) {
            const Pixel at = probes_[i].at;
            left = std::min(left, at.x);
            right = std::max(right, at.x);
            top = std::min(top, at.y);
            bottom = std::max(bottom, at.y);
        }
    }
    const std::unique_ptr<XImage, DestroyImage> image(
        XGetImage(display_, root_, left, top, static_cast<unsigned>(right - left + 1),
                  static_cast<unsigned>(bottom - top + 1), AllPlanes, ZPixmap));
    const auto now = Clock::now();
    if (!image)
        return false;
    const std::lock_guard lock(mutex_);
    for (std::size_t i = firstUnseen_; i < end; ++i) {
        Probe& probe = probes_[i];
        if (!probe.seen && drawn(XGetPixel(image.get(), probe.at.x - left, probe.at.y - top)))
            probe.seen = now;
    }
    while (firstUnseen_ < probes_.size() && probes_[firstUnseen_].seen)
        ++firstUnseen_;
    return firstUnseen_ == probes_.size();
}

} // namespace tarvik
